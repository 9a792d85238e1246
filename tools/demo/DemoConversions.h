#pragma once

// The two places where Assimp's conventions meet the library's. Everything
// the demo reads from a model file passes through these functions, and
// nowhere else is a matrix transposed or a quaternion turned around.

#include <assimp/matrix4x4.h>
#include <assimp/quaternion.h>
#include <assimp/vector3.h>

#include <math/ZEMath.h>

namespace zedemo {

/// The library's matrix for a transform Assimp holds. Assimp multiplies
/// column vectors (p' = M·p, translation in a4, b4, c4); the library
/// multiplies row vectors (p' = p·M, translation in row 3, elements 12 to 14).
/// The same transform is therefore the transpose: row r of the result is
/// column r of Assimp's matrix. A product keeps its meaning with its order
/// reversed: Assimp's parent * child becomes child·parent here.
inline Lux::Math::zeMatrix44f toRowVectorMatrix(const aiMatrix4x4& m) {
  return Lux::Math::zeMatrix44f(m.a1, m.b1, m.c1, m.d1,  //
                                m.a2, m.b2, m.c2, m.d2,  //
                                m.a3, m.b3, m.c3, m.d3,  //
                                m.a4, m.b4, m.c4, m.d4);
}

/// The library's quaternion for a rotation Assimp holds. Assimp's quaternions
/// follow the textbook: q = (cos(a/2), sin(a/2)·axis) turns by +a about the
/// axis. The library's turn the other way: its quaternion for a turn by +a
/// carries the negated half-angle, sin(-a/2)·axis (as its Euler conversion
/// shows), so the matrix it builds from (x, y, z, w) is the textbook matrix
/// of that quaternion, which used on row vectors turns by -a. The same
/// rotation is therefore the conjugate: the vector part negated, w kept.
inline Lux::Math::zeQuaternionf toLibraryQuaternion(const aiQuaternion& q) {
  return Lux::Math::zeQuaternionf(-q.x, -q.y, -q.z, q.w);
}

/// A position, direction or scale: the components as they stand.
inline Lux::Math::zeVec3f toVector(const aiVector3D& v) { return Lux::Math::zeVec3f(v.x, v.y, v.z); }

}  // namespace zedemo
