// The volume framework: type indices in registration order, the square-shell
// numbering of the pair tables, the defaults of a fresh type, routines
// installed by a class or an application, and the list of registered volumes.
// The volume classes here are declared the way an application declares its own.

#include <utility>
#include <vector>

#include <math/ZEMath.h>

#include "support/CoreFixture.h"

using namespace Lux;
using namespace Lux::Math;

// Not in an anonymous namespace: the registration statics are defined whether
// a test uses the class or not.
namespace volumes {

class Ball : public zeVolume {
  ZE_DECLARE_CLASS(, Ball)
};
ZE_IMPLEMENT_CLASS(Ball, zeVolume, zeNoLibraryInit, nullptr, nullptr)

class Crate : public zeVolume {
  ZE_DECLARE_CLASS(, Crate)
};
ZE_IMPLEMENT_CLASS(Crate, zeVolume, zeNoLibraryInit, nullptr, nullptr)

class Slab : public zeVolume {
  ZE_DECLARE_CLASS(, Slab)
};
ZE_IMPLEMENT_CLASS(Slab, zeVolume, zeNoLibraryInit, nullptr, nullptr)

class Capsule : public zeVolume {
  ZE_DECLARE_CLASS(, Capsule)
};
ZE_IMPLEMENT_CLASS(Capsule, zeVolume, zeNoLibraryInit, nullptr, nullptr)

// Derived from a volume class: a type of its own, not its parent's entries.
class BigBall : public Ball {
  ZE_DECLARE_CLASS(, BigBall)
};
ZE_IMPLEMENT_CLASS(BigBall, Ball, zeNoLibraryInit, nullptr, nullptr)

// Of which no instance can be made.
class Shape : public zeVolume {
  ZE_DECLARE_CLASS(, Shape)
};
ZE_IMPLEMENT_ABSTRACT_CLASS(Shape, zeVolume, zeNoLibraryInit, nullptr, nullptr)

// Installs its own emptiness test when it registers.
class Solid : public zeVolume {
  ZE_DECLARE_CLASS(, Solid)

 public:
  static bool solidIsEmpty(const zeVolume*) { return false; }
  static void bayRegisterUser() { setIsEmptyFunction(_Meta, &solidIsEmpty); }
};
ZE_IMPLEMENT_CLASS(Solid, zeVolume, zeNoLibraryInit, nullptr, &Solid::bayRegisterUser)

}  // namespace volumes

using namespace volumes;

namespace {

using Volume = zetest::CoreTest;

// Sixteen distinguishable intersection routines; the one called leaves its number.
int lastCalled = -1;
template <int K>
bool tagged(const zeVolume*, const zeVolume*) {
  lastCalled = K;
  return true;
}
template <int... K>
std::vector<zeIntersectionFunction> taggedRoutines(std::integer_sequence<int, K...>) {
  return {&tagged<K>...};
}
const std::vector<zeIntersectionFunction> kTagged = taggedRoutines(std::make_integer_sequence<int, 16>());

// The registered type of each index, with one instance.
struct Types {
  std::vector<zeMetaObject*> metas;
  std::vector<zeVolume*> objects;
  void add(zeObject* (*instantiate)(zeMemoryPool*)) {
    objects.push_back(static_cast<zeVolume*>(instantiate(nullptr)));
    metas.push_back(objects.back()->getMetaObject());
  }
  ~Types() {
    for (zeVolume* v : objects) v->release();
  }
};

// The pair element of (a, b) as listed for types 0 to 3.
struct PairElement {
  int a, b, element;
};
const PairElement kPairs[] = {{0, 0, 0},  {1, 0, 1},  {1, 1, 2},  {0, 1, 3}, {2, 0, 4},  {2, 1, 5},
                              {2, 2, 6},  {1, 2, 7},  {0, 2, 8},  {3, 0, 9}, {3, 1, 10}, {3, 2, 11},
                              {3, 3, 12}, {2, 3, 13}, {1, 3, 14}, {0, 3, 15}};

// Entry counts of the nine single and three pair tables.
std::vector<int> tableCounts() {
  return {zeVolume::_rayIntersectionFunctions->getCount(), zeVolume::_extendByRayFunctions->getCount(),
          zeVolume::_containsRayFunctions->getCount(),     zeVolume::_extendByVecFunctions->getCount(),
          zeVolume::_containsVecFunctions->getCount(),     zeVolume::_transformFunctions->getCount(),
          zeVolume::_emptyFunctions->getCount(),           zeVolume::_isEmptyFunctions->getCount(),
          zeVolume::_getCenterFunctions->getCount(),       zeVolume::_intersectionFunctions->getCount(),
          zeVolume::_extendByFunctions->getCount(),        zeVolume::_containsFunctions->getCount()};
}
std::vector<int> countsFor(int n) {
  std::vector<int> counts(9, n);
  counts.insert(counts.end(), 3, n * n);
  return counts;
}

}  // namespace

TEST_F(Volume, RegistersAbstractWithTwelveEmptyTablesInOrder) {
  zeVolumeList::bayRegister();
  zeMetaObject* meta = zeVolume::getClassMeta();
  ASSERT_NE(meta, nullptr) << "the list registers its element class";
  EXPECT_STREQ(meta->getName(), "zeVolume");
  EXPECT_TRUE(meta->isAbstract());
  EXPECT_EQ(meta->getParent(), zeObject::getClassMeta());
  EXPECT_EQ(meta->getMetaFieldCount(), 0);
  EXPECT_EQ(meta->getChildCount(), 0);
  EXPECT_EQ(tableCounts(), countsFor(0));

  // Made in this order, each of its own list class.
  const zeDataList* const tables[] = {
      zeVolume::_rayIntersectionFunctions, zeVolume::_extendByRayFunctions, zeVolume::_containsRayFunctions,
      zeVolume::_extendByVecFunctions,     zeVolume::_containsVecFunctions, zeVolume::_emptyFunctions,
      zeVolume::_isEmptyFunctions,         zeVolume::_transformFunctions,   zeVolume::_getCenterFunctions,
      zeVolume::_intersectionFunctions,    zeVolume::_extendByFunctions,    zeVolume::_containsFunctions};
  const char* const names[] = {
      "zeRayIntersectionFunctionList", "zeExtendByRayFunctionList", "zeContainsRayFunctionList",
      "zeExtendByVecFunctionList",     "zeContainsVecFunctionList", "zeEmptyFunctionList",
      "zeIsEmptyFunctionList",         "zeTransformFunctionList",   "zeGetCenterFunctionList",
      "zeIntersectionFunctionList",    "zeExtendByFunctionList",    "zeContainsFunctionList"};
  int previous = meta->getClassIndex();
  for (int i = 0; i < 12; ++i) {
    SCOPED_TRACE(names[i]);
    ASSERT_NE(tables[i], nullptr);
    EXPECT_STREQ(tables[i]->getMetaObject()->getName(), names[i]);
    EXPECT_EQ(tables[i]->getMetaObject()->getParent(), zeDataList::getClassMeta());
    EXPECT_EQ(tables[i]->getElementSize(), 8u);
    EXPECT_EQ(tables[i]->getReferenceCount(), 1u);
    EXPECT_GT(tables[i]->getMetaObject()->getClassIndex(), previous);
    previous = tables[i]->getMetaObject()->getClassIndex();
  }
  auto* list = static_cast<zeVolumeList*>(zeVolumeList::_instantiateFromPool(nullptr));
  EXPECT_EQ(list->getElementType(), meta);
  list->release();
}

TEST_F(Volume, PairNumberingWalksSquareShellsAndNothingMoves) {
  Types types;
  types.add(&Ball::_instantiateFromPool);
  types.add(&Crate::_instantiateFromPool);
  types.add(&Slab::_instantiateFromPool);
  for (unsigned int i = 0; i < 3; ++i) EXPECT_EQ(zeVolume::getTypeIndex(types.metas[i]), i);
  EXPECT_EQ(tableCounts(), countsFor(3));

  // An application installs its own routine for every pair; growing the
  // tables moves none of them.
  auto install = [&](int from, int to) {
    for (int k = from; k < to; ++k) {
      const PairElement& p = kPairs[k];
      EXPECT_EQ(zeVolume::getPairIndex(p.a, p.b), static_cast<unsigned int>(p.element));
      zeVolume::setIntersectionFunction(types.metas[p.a], types.metas[p.b], kTagged[p.element]);
    }
  };
  install(0, 9);
  types.add(&Capsule::_instantiateFromPool);
  EXPECT_EQ(zeVolume::getTypeIndex(types.metas[3]), 3u);
  EXPECT_EQ(tableCounts(), countsFor(4));
  for (int element = 0; element < 16; ++element)
    EXPECT_EQ(zeVolume::_intersectionFunctions->data()[element],
              element < 9 ? kTagged[element] : &zeVolume::zeVolumeIntersectVolume)
        << "element " << element;
  install(9, 16);

  // Dispatch reaches the routine of the ordered pair.
  for (const PairElement& p : kPairs) {
    lastCalled = -1;
    EXPECT_TRUE(types.objects[p.a]->intersect(types.objects[p.b]));
    EXPECT_EQ(lastCalled, p.element) << "pair (" << p.a << ", " << p.b << ")";
    EXPECT_EQ(zeVolume::getIntersectionFunction(types.metas[p.a], types.metas[p.b]), kTagged[p.element]);
  }
}

TEST_F(Volume, FreshTypeAnswersWithTheDefaults) {
  Types types;
  types.add(&Ball::_instantiateFromPool);
  types.add(&BigBall::_instantiateFromPool);
  zeMetaObject* ball = types.metas[0];
  zeMetaObject* bigBall = types.metas[1];
  EXPECT_EQ(zeVolume::getTypeIndex(bigBall), 1u) << "derived from a volume class, a type of its own";

  // Entries installed for the parent are not inherited.
  zeVolume::setIsEmptyFunction(ball, &Solid::solidIsEmpty);
  zeVolume::setIntersectionFunction(ball, ball, &tagged<0>);
  EXPECT_FALSE(types.objects[0]->isEmpty());

  zeVolume* fresh = types.objects[1];
  auto* ray = static_cast<zeRay*>(zeRay::_instantiateFromPool(nullptr));
  EXPECT_FALSE(fresh->intersect(fresh));
  EXPECT_FALSE(fresh->intersect(types.objects[0]));
  EXPECT_FALSE(fresh->intersect(ray));
  EXPECT_EQ(fresh->contains(types.objects[0]), ZE_MATH_CONTAINMENT_RESULTS_NONE);
  EXPECT_EQ(fresh->contains(ray), ZE_MATH_CONTAINMENT_RESULTS_NONE);
  EXPECT_EQ(fresh->contains(zeVec3f(0, 0, 0)), ZE_MATH_CONTAINMENT_RESULTS_NONE);
  EXPECT_TRUE(fresh->isEmpty());
  zeVec3f centre(1, 2, 3);
  fresh->getCenter(centre);
  EXPECT_EQ(centre, zeVec3f(1, 2, 3));
  ray->release();

  EXPECT_EQ(zeVolume::getIntersectionFunction(bigBall, ball), &zeVolume::zeVolumeIntersectVolume);
  EXPECT_EQ(zeVolume::getExtendByFunction(ball, bigBall), &zeVolume::zeVolumeExtendByVolume);
  EXPECT_EQ(zeVolume::getContainsFunction(bigBall, bigBall), &zeVolume::zeVolumeContainsVolume);
  EXPECT_EQ(zeVolume::getRayIntersectionFunction(bigBall), &zeVolume::zeVolumeIntersectRay);
  EXPECT_EQ(zeVolume::getContainsRayFunction(bigBall), &zeVolume::zeVolumeContainsRay);
  EXPECT_EQ(zeVolume::getExtendByRayFunction(bigBall), &zeVolume::zeVolumeExtendByRay);
  EXPECT_EQ(zeVolume::getContainsVecFunction(bigBall), &zeVolume::zeVolumeContainsVec);
  EXPECT_EQ(zeVolume::getExtendByVecFunction(bigBall), &zeVolume::zeVolumeExtendByVec);
  EXPECT_EQ(zeVolume::getTransformFunction(bigBall), &zeVolume::zeVolumeTransform);
  EXPECT_EQ(zeVolume::getEmptyFunction(bigBall), &zeVolume::zeVolumeEmpty);
  EXPECT_EQ(zeVolume::getIsEmptyFunction(bigBall), &zeVolume::zeVolumeIsEmpty);
  EXPECT_EQ(zeVolume::getGetCenterFunction(bigBall), &zeVolume::zeVolumeGetCenter);

  // A class installing its own entry when it registers does so over the default.
  types.add(&Solid::_instantiateFromPool);
  EXPECT_EQ(zeVolume::getTypeIndex(types.metas[2]), 2u);
  EXPECT_FALSE(types.objects[2]->isEmpty());
  EXPECT_EQ(zeVolume::getEmptyFunction(types.metas[2]), &zeVolume::zeVolumeEmpty);
}

TEST_F(Volume, ASecondCallbackChangesNothing) {
  Types types;
  types.add(&Ball::_instantiateFromPool);
  types.add(&Crate::_instantiateFromPool);
  zeVolume::setIntersectionFunction(types.metas[1], types.metas[0], &tagged<1>);
  zeVolume::setIsEmptyFunction(types.metas[1], &Solid::solidIsEmpty);

  zeVolume::registerClass(types.metas[1]);
  zeVolume::registerClass(types.metas[0]);
  zeVolume::registerClass(zeVolume::getClassMeta());
  zeVolume::registerClass(zeRay::getClassMetaSafe());
  EXPECT_EQ(tableCounts(), countsFor(2));
  EXPECT_EQ(zeVolume::getTypeIndex(types.metas[0]), 0u);
  EXPECT_EQ(zeVolume::getTypeIndex(types.metas[1]), 1u);
  EXPECT_EQ(zeVolume::getTypeIndex(zeRay::getClassMeta()), 0u) << "not a volume: no index written";
  EXPECT_EQ(zeVolume::getIntersectionFunction(types.metas[1], types.metas[0]), &tagged<1>);
  EXPECT_EQ(zeVolume::getIsEmptyFunction(types.metas[1]), &Solid::solidIsEmpty);
}

namespace {
std::vector<zeVec3f> extendedBy;
void recordPoint(zeVolume*, const zeVec3f& p) { extendedBy.push_back(p); }
}  // namespace

TEST_F(Volume, ExtendByPointsCallsTheEntryPointByPoint) {
  Types types;
  types.add(&Ball::_instantiateFromPool);
  zeVolume::setExtendByVecFunction(types.metas[0], &recordPoint);
  const zeVec3f points[] = {zeVec3f(1, 0, 0), zeVec3f(0, 2, 0), zeVec3f(0, 0, 3)};
  extendedBy.clear();
  types.objects[0]->extendBy(points, 0);
  types.objects[0]->extendBy(points, -3);
  EXPECT_TRUE(extendedBy.empty());
  types.objects[0]->extendBy(points, 3);
  EXPECT_EQ(extendedBy, std::vector<zeVec3f>(points, points + 3));
}

TEST_F(Volume, RegisteredVolumesCopyHoldsOneInstancePerClass) {
  Ball::bayRegister();
  Shape::bayRegister();
  BigBall::bayRegister();
  zeSmartPointer<zeVolumeList> copy = zeVolume::getRegisteredVolumesCopy(nullptr);
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy->getReferenceCount(), 1u);
  ASSERT_EQ(copy->getCount(), 3);
  EXPECT_EQ(copy->get(0)->getMetaObject(), Ball::getClassMeta());
  EXPECT_EQ(copy->get(1), nullptr) << "no instance of an abstract class";
  EXPECT_EQ(copy->get(2)->getMetaObject(), BigBall::getClassMeta());
  EXPECT_EQ(copy->get(0)->getReferenceCount(), 1u);
  EXPECT_EQ(copy->get(2)->getReferenceCount(), 1u);
  EXPECT_EQ(zeVolume::getTypeIndex(Shape::getClassMeta()), 1u) << "abstract classes are numbered too";
}
