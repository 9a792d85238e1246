#include "DemoImage.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Lux;
using namespace Lux::Math;

namespace zedemo {

namespace {

/// The camera's frame covers this fraction of the picture's width and height.
constexpr float kZoom = 0.6f;

unsigned int rgba(unsigned char r, unsigned char g, unsigned char b) {
  return zeVec3uc(r, g, b).packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, 255);
}

/// Where a world point lands in the picture; false behind the eye.
bool project(const Image& image, const zeMatrix44f& viewProjection, const zeVec3f& p, float& x, float& y) {
  zeVec4f clip;
  clip.transformPoint(p, viewProjection);
  if (clip.w < 0.1f) return false;
  x = 0.5f * float(image.width()) * (1.0f + kZoom * clip.x / clip.w);
  y = 0.5f * float(image.height()) * (1.0f - kZoom * clip.y / clip.w);
  return true;
}

void drawBox(Image& image, const Camera& camera, const zeAABox& box, unsigned int colour) {
  zeVec3f corners[8];
  box.getCorners(corners);
  float x[8], y[8];
  for (int i = 0; i < 8; ++i)
    if (!project(image, camera.viewProjection, corners[i], x[i], y[i])) return;
  // Corner i takes its x, y, z from _max where bit 2, 1, 0 of i is set: the
  // edges join corners that differ in one bit.
  for (int i = 0; i < 8; ++i)
    for (int bit = 1; bit < 8; bit <<= 1)
      if ((i & bit) == 0) image.line(int(x[i]), int(y[i]), int(x[i | bit]), int(y[i | bit]), colour);
}

void drawSphere(Image& image, const Camera& camera, const zeVec4f& pixelScale, const zeSphere& sphere,
                unsigned int colour) {
  float x, y;
  if (!project(image, camera.viewProjection, sphere._center, x, y)) return;
  const float diameter = pixelScale.computePixelSpaceDiameter(sphere._center, 2.0f * sphere._radius);
  image.circle(int(x), int(y), std::max(1, int(0.5f * kZoom * diameter)), colour);
}

void drawPoints(Image& image, const Camera& camera, const zeMatrix44f& model, const std::vector<zeVec3f>& points,
                unsigned int colour) {
  zeMatrix44f modelViewProjection;
  zeMatrix44f::matrixMultiply(&modelViewProjection, &model, &camera.viewProjection);
  for (const zeVec3f& p : points) {
    float x, y;
    if (project(image, modelViewProjection, p, x, y)) image.plot(int(x), int(y), colour);
  }
}

}  // namespace

Image::Image(int width, int height)
    : _width(width), _height(height), _pixels(static_cast<std::size_t>(width) * height * 4) {
  const unsigned int background = rgba(16, 18, 28);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) plot(x, y, background);
}

void Image::plot(int x, int y, unsigned int word) {
  if (x < 0 || y < 0 || x >= _width || y >= _height) return;
  unsigned char* p = &_pixels[(static_cast<std::size_t>(y) * _width + x) * 4];
  // The RGBA layout keeps red in the lowest byte.
  for (int i = 0; i < 4; ++i) p[i] = static_cast<unsigned char>(word >> (8 * i));
}

void Image::line(int x0, int y0, int x1, int y1, unsigned int word) {
  // Lines far outside the picture are not worth walking.
  const int limit = 4 * (_width + _height);
  if (std::abs(x0) > limit || std::abs(x1) > limit || std::abs(y0) > limit || std::abs(y1) > limit) return;
  const int dx = std::abs(x1 - x0), dy = -std::abs(y1 - y0);
  const int sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
  int error = dx + dy;
  for (;;) {
    plot(x0, y0, word);
    if (x0 == x1 && y0 == y1) return;
    const int twice = 2 * error;
    if (twice >= dy) error += dy, x0 += sx;
    if (twice <= dx) error += dx, y0 += sy;
  }
}

void Image::circle(int cx, int cy, int radius, unsigned int word) {
  if (radius > _width + _height) return;
  int x = radius, y = 0, error = 1 - radius;
  while (x >= y) {
    const int px[8] = {x, y, -y, -x, -x, -y, y, x}, py[8] = {y, x, x, y, -y, -x, -x, -y};
    for (int i = 0; i < 8; ++i) plot(cx + px[i], cy + py[i], word);
    ++y;
    if (error < 0) {
      error += 2 * y + 1;
    } else {
      --x;
      error += 2 * (y - x) + 1;
    }
  }
}

bool Image::writePng(const std::string& path) const {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(_width);
  image.height = static_cast<png_uint_32>(_height);
  image.format = PNG_FORMAT_RGBA;
  const bool written = png_image_write_to_file(&image, path.c_str(), 0, _pixels.data(), 0, nullptr) != 0;
  png_image_free(&image);
  return written;
}

void drawScene(Image& image, const Camera& camera, const std::vector<zeSmartPointer<zeVolume>>& volumes,
               const std::vector<unsigned char>& results, unsigned int drawCount, const Mesh& mesh) {
  // Outside in a dim red so that what the camera keeps stands out.
  const unsigned int colours[3] = {rgba(130, 50, 55), rgba(240, 200, 40), rgba(70, 220, 100)};  // none, partial, all
  zeVec4f pixelScale;
  pixelScale.makePixelToModelScale(camera.view, camera.projection, image.width(), image.height());
  const zeMetaObject* boxClass = zeAABox::getClassMeta();
  for (unsigned int i = 0; i < drawCount && i < volumes.size(); ++i) {
    const unsigned int colour = colours[results[i]];
    const zeVolume* volume = volumes[i].get();
    if (volume->getMetaObject() == boxClass)
      drawBox(image, camera, *static_cast<const zeAABox*>(volume), colour);
    else
      drawSphere(image, camera, pixelScale, *static_cast<const zeSphere*>(volume), colour);
  }
  drawPoints(image, camera, mesh.model, mesh.rest, rgba(110, 110, 130));
  drawPoints(image, camera, mesh.model, mesh.skinned, rgba(255, 255, 255));
  // The camera's frame: what the camera itself would show.
  const int x0 = int(0.5f * image.width() * (1 - kZoom)), x1 = int(0.5f * image.width() * (1 + kZoom));
  const int y0 = int(0.5f * image.height() * (1 - kZoom)), y1 = int(0.5f * image.height() * (1 + kZoom));
  const unsigned int frame = rgba(120, 170, 255);
  image.line(x0, y0, x1, y0, frame);
  image.line(x1, y0, x1, y1, frame);
  image.line(x1, y1, x0, y1, frame);
  image.line(x0, y1, x0, y0, frame);
}

}  // namespace zedemo
