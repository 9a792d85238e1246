#pragma once

// The demo on a model file: load it, play its animation frame by frame
// through the library (sampling, hierarchy, palette, skinning, bounds,
// culling), time each stage and draw a contact sheet.

#include <string>

#include "DemoReport.h"

namespace zedemo {

/// What the model run is asked to do.
struct ModelOptions {
  std::string path;            ///< the model file
  unsigned int frames = 60;    ///< frames spread over the animation, first and last key included
  unsigned int animation = 0;  ///< which of the file's animations plays
  std::string image;           ///< where the contact sheet goes; empty for none
};

/// Runs the model part of the demo, its stages timed by `timer`; the library
/// is loaded and registered. Returns the exit status: 0, or 1 after a message
/// on standard error when the model cannot be used or the picture written.
int runModel(const ModelOptions& options, StageTimer& timer);

}  // namespace zedemo
