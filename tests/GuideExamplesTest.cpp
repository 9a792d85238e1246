// The worked examples of docs/guide.md. Each block between "// example: NAME"
// and "// end" appears word for word in the guide (GuideExamplesMatch checks
// that), so the guide's code is compiled and run with the suite.

#include <cmath>
#include <cstring>
#include <string>

#include <math/ZEMath.h>

#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

namespace guide {

// example: volume-class
// A capsule volume of the application's own. Registering it gives it the
// next type index and default entries in every table; its user step
// installs the routines it has.
class Capsule : public zeVolume {
  ZE_DECLARE_CLASS(, Capsule)

 public:
  static bool capsuleIsEmpty(const zeVolume*) { return false; }
  static bool capsuleIntersectSphere(const zeVolume*, const zeVolume*) { return true; }
  static void bayRegisterUser() {
    setIsEmptyFunction(_Meta, &capsuleIsEmpty);
    setIntersectionFunction(_Meta, zeSphere::getClassMetaSafe(), &capsuleIntersectSphere);
  }
};
ZE_IMPLEMENT_CLASS(Capsule, zeVolume, zeNoLibraryInit, nullptr, &Capsule::bayRegisterUser)
// end

}  // namespace guide

namespace {

using Guide = zetest::CoreTest;

template <class T>
zeSmartPointer<T> create() {
  return zeSmartPointer<T>::adopt(static_cast<T*>(T::_instantiateFromPool(nullptr)));
}

}  // namespace

TEST(GuideExamples, RowVectorsComposeLeftToRight) {
  // example: rows
  zeMatrix44f scale, move, world;
  scale.makeScale(2.0f);
  move.makeTranslation(zeVec3f(10, 0, -5));
  // p' = p·M: in scale·move the scale applies first, then the move.
  zeMatrix44f::matrixMultiply(&world, &scale, &move);
  zeVec3f p;
  p.transformPoint(zeVec3f(1, 2, 3), world);  // (2, 4, 6) + (10, 0, -5) = (12, 4, 1)

  // pre... puts the new transform before the matrix, post... after it.
  zeMatrix44f m = zeMatrix44f::identityMatrix;
  m.postScale(zeVec3f(2, 2, 2));          // m = scale
  m.postTranslation(zeVec3f(10, 0, -5));  // m = scale·move, same as world
  m.preTranslation(zeVec3f(1, 0, 0));     // m = move(1, 0, 0)·scale·move
  // end
  EXPECT_EQ(p.x, 12.0f);
  EXPECT_EQ(p.y, 4.0f);
  EXPECT_EQ(p.z, 1.0f);
  zeVec3f q;
  q.transformPoint(zeVec3f(0, 0, 0), m);
  EXPECT_EQ(q.x, 12.0f);  // (1, 0, 0) scaled to (2, 0, 0), then moved
  EXPECT_EQ(q.y, 0.0f);
  EXPECT_EQ(q.z, -5.0f);
}

TEST(GuideExamples, AnglesAreRadiansEulerRotatesAboutXThenYThenZ) {
  // example: euler
  const float quarterTurn = 1.5707964f;  // radians
  zeMatrix44f euler, aboutZ;
  euler.makeRotationRadians(0.0f, 0.0f, quarterTurn);         // about x, then y, then z
  aboutZ.makeRotationRadians(quarterTurn, zeVec3f::ZVector);  // axis and angle
  zeVec3f p;
  p.transformPoint(zeVec3f::XVector, euler);  // the x axis turns to (0, 1, 0)
  // end
  EXPECT_NEAR(p.x, 0.0f, 1e-7f);
  EXPECT_NEAR(p.y, 1.0f, 1e-7f);
  EXPECT_NEAR(p.z, 0.0f, 1e-7f);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(euler[i], aboutZ[i], 1e-7f) << i;
}

TEST(GuideExamples, TheThresholdIsOneFloatForBothPrecisions) {
  // example: threshold
  const float f = zeSmallThreshold<float>;    // 5e-7f
  const double d = zeSmallThreshold<double>;  // that float widened, not the double 5e-7
  zeMatrix44f a = zeMatrix44f::identityMatrix, b = a;
  b(0, 0) += 4e-7f;
  const bool alike = (a == b);  // == compares within the threshold: true
  // end
  EXPECT_EQ(d, static_cast<double>(f));
  EXPECT_NE(d, 5e-7);
  EXPECT_TRUE(alike);
}

TEST(GuideExamples, TheExactnessCheckNamesTheFamiliesThatDiffer) {
  std::string report;
  // example: exact
  // At start-up, in a file compiled like the rest of the program:
  const unsigned int inexact = zeCheckExactResults();  // 0: the library's bits here
  for (unsigned int family = 1; family <= inexact; family <<= 1)
    if (inexact & family) report += std::string(" ") + zeExactFamilyName(family);  // "vectors", ...
  // end
  EXPECT_EQ(0u, inexact);  // the suite is built with -ffp-contract=off
  EXPECT_EQ("", report);
}

TEST_F(Guide, VolumesDispatchThroughTablesAndAcceptNewRoutines) {
  // example: dispatch
  libZEMath_bayRegister();  // registers every class; the volumes get their type indices
  zeSmartPointer<zeSphere> sphere = create<zeSphere>();
  sphere->_center = zeVec3f(0, 0, 0);
  sphere->_radius = 1.0f;
  zeSmartPointer<zeAABox> box = create<zeAABox>();
  box->_min = zeVec3f(0.5f, 0.5f, 0.5f);
  box->_max = zeVec3f(2, 2, 2);
  const bool meets = sphere->intersect(box.get());  // entry (sphere, box) of the intersection table

  // An application may install its own routine for a pair of types.
  zeVolume::setIntersectionFunction(zeSphere::getClassMeta(), zeAABox::getClassMeta(),
                                    [](const zeVolume*, const zeVolume*) { return false; });
  const bool afterwards = sphere->intersect(box.get());  // false: the new routine answers
  // end
  EXPECT_TRUE(meets);
  EXPECT_FALSE(afterwards);
}

TEST_F(Guide, AVolumeClassOfTheApplicationGetsTheNextTypeIndex) {
  libZEMath_bayRegister();
  guide::Capsule::bayRegister();
  EXPECT_EQ(zeVolume::getTypeIndex(guide::Capsule::getClassMeta()), 3u);
  zeSmartPointer<guide::Capsule> capsule = create<guide::Capsule>();
  zeSmartPointer<zeSphere> sphere = create<zeSphere>();
  EXPECT_FALSE(capsule->isEmpty());
  EXPECT_TRUE(capsule->intersect(sphere.get()));
}

TEST_F(Guide, FieldsPrintParseAndSwapTheirValues) {
  // example: text
  zeVec3fMetaField::bayRegister();
  zeMetaField* field = zeVec3fMetaField::_MetaField;  // the shared descriptor of the type
  zeVec3f v(1, 2.5f, -0.25f);
  const char* text = field->getStringFromMemory(&v, nullptr);  // "1.000000,2.500000,-0.250000"
  zeVec3f back;
  const int used = field->setMemoryByString(&back, text, nullptr);  // characters consumed; 0 on failure
  // The pooled text is the caller's reference.
  zeInternalStringPool::releaseString(text);

  field->endianSwapMemory(&back, 1);  // each float's four bytes reversed, as in a file of the other byte order
  field->endianSwapMemory(&back, 1);  // and back
  // end
  EXPECT_EQ(used, 27);
  EXPECT_EQ(back, v);
}

TEST_F(Guide, KernelsAreCalledThroughTheirPointers) {
  // example: kernels
  libZEMath_bayRegister();  // installs the library's kernels in the pointers
  const zeVec4f source[1] = {zeVec4f(1, 2, 3, 0)};
  const float weights[2] = {0.5f, 0.5f};
  const unsigned char indices[2] = {0, 1};
  zeMatrix44f palette[2];
  palette[0].makeTranslation(zeVec3f(2, 0, 0));
  palette[1].makeTranslation(zeVec3f(0, 4, 0));
  zeVec3f skinned[1];
  zeVectorBlending::_vectorBlendingFunction(source, 1, weights, indices, 2, palette, skinned, sizeof(zeVec3f));
  // skinned[0] = (1, 2, 3, 1)·palette[0] * 0.5 + (1, 2, 3, 1)·palette[1] * 0.5 = (2, 4, 3)

  const zeVec3f base[1] = {zeVec3f(1, 1, 1)};
  const zeVec3f smile[1] = {zeVec3f(0, 2, 0)};
  const zeVec3f* targets[1] = {smile};
  const float amount[1] = {0.5f};
  zeVec3f morphed[1];
  zeVectorMorphing::_vectorMorphingFunction(base, targets, amount, 1, 1, morphed, sizeof(zeVec3f));
  // morphed[0] = base + smile * 0.5 = (1, 2, 1)
  // end
  EXPECT_EQ(skinned[0].x, 2.0f);
  EXPECT_EQ(skinned[0].y, 4.0f);
  EXPECT_EQ(skinned[0].z, 3.0f);
  EXPECT_EQ(morphed[0].x, 1.0f);
  EXPECT_EQ(morphed[0].y, 2.0f);
  EXPECT_EQ(morphed[0].z, 1.0f);
}
