#pragma once

/// \file
/// How the kernels write their outputs through a byte stride.

#include <cstring>

#include "math/zeVec3f.h"

namespace Lux {
namespace Math {
namespace impl {

/// Walks the outputs of a kernel: each write fills the 12 bytes of one
/// position and nothing else, and next() moves on by the stride in bytes. A
/// stride need not be a multiple of the component size, so the bytes are
/// copied rather than stored as floats.
class StridedOutput {
 public:
  StridedOutput(zeVec3f* first, unsigned int stride) noexcept
      : at_(reinterpret_cast<unsigned char*>(first)), stride_(stride) {}

  void write(float x, float y, float z) noexcept {
    const float v[3] = {x, y, z};
    std::memcpy(at_, v, sizeof v);
  }
  void next() noexcept { at_ += stride_; }

 private:
  unsigned char* at_;
  unsigned int stride_;
};

}  // namespace impl
}  // namespace Math
}  // namespace Lux
