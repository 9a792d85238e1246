#pragma once

#include "core/zeMetaEnum.h"
#include "core/zeObject.h"
#include "math/meta/zeMathClassRegistration.h"
#include "math/zeVec3f.h"

namespace Lux {
namespace Math {

class zeMatrix44f;

/// A finite ray: start point `_pos`, direction `_dir` (of unit length after
/// make() and transform()) and length `_len`; the end point is
/// `_pos + _dir * _len`. Volumes take it as argument; it is not a volume.
class ZEMATH_API zeRay : public zeObject {
  ZE_MATH_DECLARE_CLASS(zeRay)
  ZE_MATH_DECLARE_FIELD_SLOT(_pos)
  ZE_MATH_DECLARE_FIELD_SLOT(_dir)
  ZE_MATH_DECLARE_FIELD_SLOT(_len)

 public:
  /// Which faces of a triangle zeIntersect::intersectRay accepts: FRONT_SIDE
  /// those the ray meets against their normal, BACK_SIDE those it meets along
  /// it, BOTH_SIDES either.
  enum ISET_SIDES : int { FRONT_SIDE = 0, BACK_SIDE = 1, BOTH_SIDES = 2 };

  zeVec3f _pos;  ///< start point; (0, 0, 0) by default
  zeVec3f _dir;  ///< direction; (0, 1, 0) by default
  float _len;    ///< length along _dir; 0 by default

  /// The segment from `from` to `to`: _pos = from, _len = |to - from|, _dir the
  /// difference scaled to unit length. A length of at most the small threshold
  /// leaves _dir unnormalised (a zero-length segment gives _dir = (0, 0, 0)).
  void make(const zeVec3f& from, const zeVec3f& to);

  /// Maps start and end point through m as points; _dir and _len then span
  /// the mapped segment, _dir scaled by 1 / _len without a guard.
  void transform(const zeMatrix44f& m);

  /// Descriptor of ISET_SIDES, made on first request.
  static zeMetaEnum* getISET_SIDESMetaEnum();
  /// The cached descriptor of ISET_SIDES; null until first requested.
  ZEMATH_API static zeMetaEnum* ISET_SIDES_Meta;

  /// Registration: declares "_pos", "_dir" and "_len".
  ZEMATH_API static void bayRegisterInitialize();
};

}  // namespace Math
}  // namespace Lux
