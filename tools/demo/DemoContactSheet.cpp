#include "DemoContactSheet.h"

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Lux::Math;

namespace zedemo {

namespace {

unsigned int rgba(float r, float g, float b) {
  auto byte = [](float c) { return static_cast<unsigned char>(std::min(255.0f, std::max(0.0f, c))); };
  return zeVec3uc(byte(r), byte(g), byte(b)).packColor(ZE_MATH_COLORSPACE_FORMAT_RGBA, 255);
}

/// A cell of the sheet, with the depth of what is drawn in it.
struct Cell {
  Image& image;
  std::vector<float>& depth;  // one per pixel of the image
  int x0, y0, width, height;
};

/// A point seen by the camera: pixel position in the image and depth.
struct Projected {
  float x, y, z;
};

bool project(const Cell& cell, const zeMatrix44f& viewProjection, const zeVec3f& p, Projected& out) {
  zeVec4f clip;
  clip.transformPoint(p, viewProjection);
  if (!(clip.w > 1e-6f)) return false;
  out.x = float(cell.x0) + 0.5f * float(cell.width) * (1.0f + clip.x / clip.w);
  out.y = float(cell.y0) + 0.5f * float(cell.height) * (1.0f - clip.y / clip.w);
  out.z = clip.z / clip.w;
  return true;
}

float edge(const Projected& a, const Projected& b, float x, float y) {
  return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

void fillTriangle(Cell& cell, const Projected& a, const Projected& b, const Projected& c, unsigned int colour) {
  const float area = edge(a, b, c.x, c.y);
  if (!(std::fabs(area) > 1e-6f)) return;
  const int left = std::max(cell.x0, int(std::floor(std::min({a.x, b.x, c.x}))));
  const int right = std::min(cell.x0 + cell.width - 1, int(std::ceil(std::max({a.x, b.x, c.x}))));
  const int top = std::max(cell.y0, int(std::floor(std::min({a.y, b.y, c.y}))));
  const int bottom = std::min(cell.y0 + cell.height - 1, int(std::ceil(std::max({a.y, b.y, c.y}))));
  for (int y = top; y <= bottom; ++y)
    for (int x = left; x <= right; ++x) {
      const float px = float(x) + 0.5f, py = float(y) + 0.5f;
      const float wa = edge(b, c, px, py) / area, wb = edge(c, a, px, py) / area, wc = edge(a, b, px, py) / area;
      if (wa < 0.0f || wb < 0.0f || wc < 0.0f) continue;
      const float z = wa * a.z + wb * b.z + wc * c.z;
      float& stored = cell.depth[std::size_t(y) * cell.image.width() + x];
      if (z >= stored) continue;
      stored = z;
      cell.image.plot(x, y, colour);
    }
}

void drawMesh(Cell& cell, const Camera& camera, const SkinnedMesh& mesh, const std::vector<zeVec3f>& positions,
              const zeVec3f& base) {
  // The light comes from the camera's side: the view's z axis, in the world.
  const zeVec3f light(camera.view(0, 2), camera.view(1, 2), camera.view(2, 2));
  for (std::size_t t = 0; t + 2 < mesh.triangles.size(); t += 3) {
    const zeVec3f& p0 = positions[mesh.triangles[t]];
    const zeVec3f& p1 = positions[mesh.triangles[t + 1]];
    const zeVec3f& p2 = positions[mesh.triangles[t + 2]];
    Projected a, b, c;
    if (!project(cell, camera.viewProjection, p0, a) || !project(cell, camera.viewProjection, p1, b) ||
        !project(cell, camera.viewProjection, p2, c))
      continue;
    zeVec3f normal;
    normal.cross(zeVec3f(p1.x - p0.x, p1.y - p0.y, p1.z - p0.z), zeVec3f(p2.x - p0.x, p2.y - p0.y, p2.z - p0.z));
    const float length = std::sqrt(normal.dot(normal));
    const float lit = length > 0.0f ? 0.3f + 0.7f * std::fabs(normal.dot(light)) / length : 0.3f;
    fillTriangle(cell, a, b, c, rgba(base.x * lit, base.y * lit, base.z * lit));
  }
}

void drawBox(Cell& cell, const Camera& camera, const zeVec3f& lo, const zeVec3f& hi, unsigned int colour) {
  Projected corner[8];
  for (int i = 0; i < 8; ++i) {
    const zeVec3f p(i & 4 ? hi.x : lo.x, i & 2 ? hi.y : lo.y, i & 1 ? hi.z : lo.z);
    if (!project(cell, camera.viewProjection, p, corner[i])) return;
  }
  // Corners that differ in one bit share an edge.
  for (int i = 0; i < 8; ++i)
    for (int bit = 1; bit < 8; bit <<= 1)
      if ((i & bit) == 0)
        cell.image.line(int(corner[i].x), int(corner[i].y), int(corner[i | bit].x), int(corner[i | bit].y), colour);
}

}  // namespace

void drawContactSheet(Image& image, int columns, const Camera& camera, const Model& model,
                      const std::vector<SheetFrame>& frames) {
  static const zeVec3f colours[] = {{235, 190, 140}, {140, 190, 235}, {170, 225, 150},
                                    {230, 150, 190}, {220, 220, 150}, {170, 160, 230}};
  const unsigned int boxColours[3] = {rgba(200, 60, 60), rgba(240, 200, 40), rgba(70, 220, 100)};  // none, partial, all
  const int rows = (int(frames.size()) + columns - 1) / columns;
  std::vector<float> depth(std::size_t(image.width()) * image.height(), std::numeric_limits<float>::infinity());
  for (std::size_t f = 0; f < frames.size(); ++f) {
    Cell cell{image,
              depth,
              int(f % columns) * image.width() / columns,
              int(f / columns) * image.height() / rows,
              image.width() / columns,
              image.height() / rows};
    const SheetFrame& frame = frames[f];
    for (std::size_t m = 0; m < model.meshes.size(); ++m)
      drawMesh(cell, camera, model.meshes[m], frame.positions[m], colours[m % (sizeof colours / sizeof *colours)]);
    for (std::size_t m = 0; m < model.meshes.size(); ++m)
      drawBox(cell, camera, frame.lo[m], frame.hi[m], boxColours[frame.culled[m]]);
    const unsigned int border = rgba(70, 75, 95);
    const int x1 = cell.x0 + cell.width - 1, y1 = cell.y0 + cell.height - 1;
    image.line(cell.x0, cell.y0, x1, cell.y0, border);
    image.line(x1, cell.y0, x1, y1, border);
    image.line(x1, y1, cell.x0, y1, border);
    image.line(cell.x0, y1, cell.x0, cell.y0, border);
  }
}

}  // namespace zedemo
