#pragma once

// Helpers shared by the volume suites: volumes and rays made by their classes
// with their fields set, the containment results by short names.

#include <utility>

#include <gtest/gtest.h>
#include <math/ZEMath.h>

#include "support/Bits.h"

namespace zetest {

constexpr Lux::Math::ZE_MATH_CONTAINMENT_RESULTS NONE = Lux::Math::ZE_MATH_CONTAINMENT_RESULTS_NONE;
constexpr Lux::Math::ZE_MATH_CONTAINMENT_RESULTS PARTIAL = Lux::Math::ZE_MATH_CONTAINMENT_RESULTS_PARTIAL;
constexpr Lux::Math::ZE_MATH_CONTAINMENT_RESULTS ALL = Lux::Math::ZE_MATH_CONTAINMENT_RESULTS_ALL;

/// An object made by its class, released with the holder; it passes as a
/// plain pointer for the length of the expression it appears in.
template <class T>
struct Held : Lux::zeSmartPointer<T> {
  Held(Lux::zeSmartPointer<T>&& p) : Lux::zeSmartPointer<T>(std::move(p)) {}
  operator T*() const { return this->get(); }
};

template <class T>
Held<T> make() {
  return Lux::zeCreate<T>();
}

inline Held<Lux::Math::zeAABox> box(const Lux::Math::zeVec3f& lo, const Lux::Math::zeVec3f& hi) {
  Held<Lux::Math::zeAABox> b = make<Lux::Math::zeAABox>();
  b->_min = lo;
  b->_max = hi;
  return b;
}

inline Held<Lux::Math::zeSphere> sphere(const Lux::Math::zeVec3f& c, float r) {
  Held<Lux::Math::zeSphere> s = make<Lux::Math::zeSphere>();
  s->_center = c;
  s->_radius = r;
  return s;
}

/// A plane made by create(): normalised, its octant cached.
inline Held<Lux::Math::zePlane> plane(const Lux::Math::zeVec3f& normal, float offset) {
  Held<Lux::Math::zePlane> p = make<Lux::Math::zePlane>();
  p->create(normal, offset);
  return p;
}

inline Held<Lux::Math::zeRay> ray(const Lux::Math::zeVec3f& pos, const Lux::Math::zeVec3f& dir, float len) {
  Held<Lux::Math::zeRay> r = make<Lux::Math::zeRay>();
  r->_pos = pos;
  r->_dir = dir;
  r->_len = len;
  return r;
}

}  // namespace zetest
