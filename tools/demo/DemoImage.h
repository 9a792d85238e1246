#pragma once

// The demo's picture: what the camera sees, drawn zoomed out so that the
// camera's frame sits inside the image and what lies beside it shows too.

#include <string>
#include <vector>

#include <math/ZEMath.h>

#include "DemoMesh.h"
#include "DemoScene.h"

namespace zedemo {

/// An RGBA picture with simple line, circle and point drawing.
class Image {
 public:
  Image(int width, int height);
  /// Sets pixel (x, y) to the colour packed in `rgba` (packColor, RGBA layout);
  /// outside the picture nothing is drawn.
  void plot(int x, int y, unsigned int rgba);
  /// A straight line from (x0, y0) to (x1, y1).
  void line(int x0, int y0, int x1, int y1, unsigned int rgba);
  /// The outline of a circle.
  void circle(int cx, int cy, int radius, unsigned int rgba);
  /// Writes the picture as a PNG file; false when it cannot.
  bool writePng(const std::string& path) const;

  int width() const { return _width; }
  int height() const { return _height; }

 private:
  int _width, _height;
  std::vector<unsigned char> _pixels;  // r, g, b, a per pixel, row by row
};

/// Draws the scene: the camera's frame, the first `drawCount` volumes
/// coloured by their result in `results`, the mesh at rest (grey) and
/// deformed (white).
void drawScene(Image& image, const Camera& camera, const std::vector<Lux::zeSmartPointer<Lux::Math::zeVolume>>& volumes,
               const std::vector<unsigned char>& results, unsigned int drawCount, const Mesh& mesh);

}  // namespace zedemo
