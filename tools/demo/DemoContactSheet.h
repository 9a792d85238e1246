#pragma once

// The model run's picture: a contact sheet of a few frames of the animation,
// each in its own cell, the skinned meshes projected with the library's
// matrices and shaded flat.

#include <vector>

#include <math/ZEMath.h>

#include "DemoImage.h"
#include "DemoModel.h"
#include "DemoScene.h"

namespace zedemo {

/// What the sheet shows of one frame.
struct SheetFrame {
  double time = 0;                                         ///< in ticks
  std::vector<std::vector<Lux::Math::zeVec3f>> positions;  ///< skinned positions, per mesh
  std::vector<Lux::Math::zeVec3f> lo, hi;                  ///< each mesh's bounds
  std::vector<unsigned char> culled;                       ///< each mesh's culling result
};

/// Draws `frames` in reading order, `columns` to a row, each in a cell of
/// the image seen through `camera` (made for one cell): every mesh's
/// triangles shaded flat in a colour of its own, and its bounds outlined in
/// the colour of its culling result (green inside, yellow partial, red
/// outside).
void drawContactSheet(Image& image, int columns, const Camera& camera, const Model& model,
                      const std::vector<SheetFrame>& frames);

}  // namespace zedemo
