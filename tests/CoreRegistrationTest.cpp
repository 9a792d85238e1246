// Class registration: once, parent first, callbacks before the user step,
// the registered flag last, partners registering each other, descendants,
// fields, field descriptors, enum descriptors and unregistration.

#include <cstddef>
#include <string>
#include <vector>

#include "support/CoreFixture.h"
#include "support/CoreHelpers.h"

using namespace Lux;

// Not an anonymous namespace: every registration static is defined whether a
// test uses it or not.
namespace registration {

std::vector<std::string> events;

// Records a registration step of `meta` and whether the class was already
// marked registered at that point.
void record(const char* step, const zeMetaObject* meta) {
  events.push_back(std::string(step) + ":" + meta->getName() + (meta->isRegistered() ? ":done" : ""));
}

// An abstract family root that watches every class derived from it.
class Base : public zeObject {
  ZE_DECLARE_CLASS(, Base)

 public:
  static void onDerivedClass(zeMetaObject* meta) {
    record("callback", meta);
    // Joined to the descendants before any callback runs.
    if (_Meta->getChild(_Meta->getChildCount() - 1) != meta) events.push_back("not yet a descendant");
  }
  static void destructor() { events.push_back("destructor:Base"); }
  static void bayRegisterInitialize() { _Meta->registerClassDestructor(&destructor); }
  static void bayRegisterUser() {
    record("user", _Meta);
    _Meta->registerClassRegistrationCallback(&onDerivedClass);
  }
};
ZE_IMPLEMENT_ABSTRACT_CLASS(Base, zeObject, zeNoLibraryInit, &Base::bayRegisterInitialize, &Base::bayRegisterUser)

class Lamp : public Base {
  ZE_DECLARE_CLASS(, Lamp)
  ZE_DECLARE_FIELD_SLOT(, _power)
  ZE_DECLARE_FIELD_SLOT(, _mode)

 public:
  float _power;
  int _mode;

  static void bayRegisterInitialize() {
    record("initialize", _Meta);
    zetest::declareFields(_Meta, {{&zeFloatMetaField::_instantiateFromPool, "_power", &k_power, offsetof(Lamp, _power)},
                                  {&zeIntMetaField::_instantiateFromPool, "_mode", &k_mode, offsetof(Lamp, _mode)}});
    static_cast<zeFloatMetaField*>(k_power)->setDefault(100.0f);
  }
  static void bayRegisterUser() { record("user", _Meta); }
};
ZE_DEFINE_FIELD_SLOT(Lamp, _power)
ZE_DEFINE_FIELD_SLOT(Lamp, _mode)
ZE_IMPLEMENT_CLASS(Lamp, Base, zeNoLibraryInit, &Lamp::bayRegisterInitialize, &Lamp::bayRegisterUser)

void spotLampFurther();

class SpotLamp : public Lamp {
  ZE_DECLARE_CLASS(, SpotLamp)
  ZE_DECLARE_FIELD_SLOT(, _angle)

 public:
  double _angle;

  static void bayRegisterInitialize() {
    record("initialize", _Meta);
    zetest::declareFields(_Meta,
                          {{&zeDoubleMetaField::_instantiateFromPool, "_angle", &k_angle, offsetof(SpotLamp, _angle)}});
  }
  static void bayRegisterUser() { record("user", _Meta); }
};
ZE_DEFINE_FIELD_SLOT(SpotLamp, _angle)
ZE_IMPLEMENT_CLASS_WITH_FURTHER(SpotLamp, Lamp, zeNoLibraryInit, &SpotLamp::bayRegisterInitialize,
                                &SpotLamp::bayRegisterUser, &spotLampFurther)
void spotLampFurther() { record("further", SpotLamp::_Meta); }

// Two classes whose user steps need each other.
zeMetaObject* alphaSeenByBeta = nullptr;
bool alphaWasCompleteForBeta = true;

class Beta;
class Alpha : public Base {
  ZE_DECLARE_CLASS(, Alpha)
  static void bayRegisterUser();
};
class Beta : public Base {
  ZE_DECLARE_CLASS(, Beta)
  static void bayRegisterUser() {
    alphaSeenByBeta = Alpha::getClassMetaSafe();
    alphaWasCompleteForBeta = alphaSeenByBeta && alphaSeenByBeta->isRegistered();
  }
};
void Alpha::bayRegisterUser() { Beta::bayRegister(); }
ZE_IMPLEMENT_CLASS(Alpha, Base, zeNoLibraryInit, nullptr, &Alpha::bayRegisterUser)
ZE_IMPLEMENT_CLASS(Beta, Base, zeNoLibraryInit, nullptr, &Beta::bayRegisterUser)

}  // namespace registration

using namespace registration;

// A second class named Lamp: the name is taken, so it cannot register.
namespace other {
class Lamp : public zeObject {
  ZE_DECLARE_CLASS(, Lamp)
};
ZE_IMPLEMENT_CLASS(Lamp, zeObject, zeNoLibraryInit, nullptr, nullptr)
}  // namespace other

namespace {

class CoreRegistration : public zetest::CoreTest {
 protected:
  void SetUp() override {
    zetest::CoreTest::SetUp();
    events.clear();
  }
};

}  // namespace

TEST_F(CoreRegistration, RegistersOnFirstNeedParentFirstAndOnce) {
  EXPECT_EQ(SpotLamp::getClassMeta(), nullptr);
  zeMetaObject* meta = SpotLamp::getClassMetaSafe();
  ASSERT_NE(meta, nullptr);
  EXPECT_EQ(meta, SpotLamp::getClassMeta());
  const std::vector<std::string> expected = {"user:Base",     "callback:Lamp",     "initialize:Lamp",
                                             "user:Lamp",     "callback:SpotLamp", "initialize:SpotLamp",
                                             "user:SpotLamp", "further:SpotLamp"};
  EXPECT_EQ(events, expected) << "no step may see the registered flag";
  EXPECT_EQ(meta->getFlags() & 4u, 4u);

  const int classes = zeMetaObject::getClassCount();
  zeRegistrationResult first = zeBayRegister(&SpotLamp::bayRegisterInternal);
  SpotLamp::bayRegister();
  SpotLamp::_instantiateFromPool(nullptr)->release();
  EXPECT_EQ(events.size(), expected.size());
  EXPECT_EQ(zeMetaObject::getClassCount(), classes);
  EXPECT_EQ(zeBayRegister(&SpotLamp::bayRegisterInternal), first) << "the kept result";
  ASSERT_TRUE(first);
  ASSERT_EQ(first->getCount(), 1) << "the fields the class declares itself";
  EXPECT_EQ(first->get(0), SpotLamp::k_angle);

  // The registry lists classes in registration order: the root first, the parent before the child.
  EXPECT_EQ(zeMetaObject::getClass(0), zeObject::_Meta);
  EXPECT_LT(Lamp::_Meta->getClassIndex(), meta->getClassIndex());
  EXPECT_EQ(zeMetaObject::find("SpotLamp"), meta);
}

TEST_F(CoreRegistration, PartnersRegisteringEachOtherSeeThePartlyRegisteredClass) {
  Alpha::bayRegister();
  ASSERT_TRUE(Alpha::_Meta && Beta::_Meta);
  EXPECT_EQ(alphaSeenByBeta, Alpha::_Meta);
  EXPECT_FALSE(alphaWasCompleteForBeta) << "Alpha's user step was still running";
  EXPECT_TRUE(Alpha::_Meta->isRegistered() && Beta::_Meta->isRegistered());
  EXPECT_LT(Alpha::_Meta->getClassIndex(), Beta::_Meta->getClassIndex());
}

TEST_F(CoreRegistration, AncestorsListEveryDescendantInRegistrationOrder) {
  SpotLamp::bayRegister();
  Alpha::bayRegister();
  const zeMetaObject* base = Base::_Meta;
  ASSERT_EQ(base->getChildCount(), 4);
  EXPECT_EQ(base->getChild(0), Lamp::_Meta);
  EXPECT_EQ(base->getChild(1), SpotLamp::_Meta);
  EXPECT_EQ(base->getChild(2), Alpha::_Meta);
  EXPECT_EQ(base->getChild(3), Beta::_Meta);
  EXPECT_EQ(base->getChild(4), nullptr);
  EXPECT_EQ(Lamp::_Meta->getChildCount(), 1);
  EXPECT_EQ(zeObject::_Meta->getChildCount(), zeMetaObject::getClassCount() - 1);

  EXPECT_TRUE(SpotLamp::_Meta->isOfType(Base::_Meta) && SpotLamp::_Meta->isOfType(SpotLamp::_Meta));
  EXPECT_FALSE(Lamp::_Meta->isOfType(SpotLamp::_Meta) || Alpha::_Meta->isOfType(Lamp::_Meta));
  EXPECT_FALSE(Alpha::_Meta->isOfType(nullptr));
  // A class of the program has the core's very root as ancestor.
  EXPECT_EQ(Base::_Meta->getParent(), zeObject::_Meta);
  EXPECT_EQ(zeObject::_Meta->getParent(), nullptr);
}

TEST_F(CoreRegistration, FieldsComeInheritedFirstWithOffsetsSizesSlotsAndTypes) {
  const zeMetaObject* meta = SpotLamp::getClassMetaSafe();
  ASSERT_EQ(meta->getMetaFieldCount(), 3);
  const char* names[] = {"_power", "_mode", "_angle"};
  const int offsets[] = {offsetof(SpotLamp, _power), offsetof(SpotLamp, _mode), offsetof(SpotLamp, _angle)};
  const unsigned short sizes[] = {4, 4, 8};
  zeMetaField* slots[] = {Lamp::k_power, Lamp::k_mode, SpotLamp::k_angle};
  zeMetaField* shared[] = {zeFloatMetaField::_MetaField, zeIntMetaField::_MetaField, zeDoubleMetaField::_MetaField};
  for (int i = 0; i < 3; ++i) {
    const zeMetaField* field = meta->getIndexedMetaField(i);
    EXPECT_STREQ(field->getName(), names[i]);
    EXPECT_EQ(field->getOffset(), offsets[i]);
    EXPECT_EQ(field->getSize(), sizes[i]);
    EXPECT_EQ(field, slots[i]);
    EXPECT_EQ(field, meta->getMetaField(names[i]));
    ASSERT_NE(shared[i], nullptr);
    EXPECT_EQ(zeMetaField::_MetaFieldList->get(field->getTypeIndex()), shared[i]);
  }
  EXPECT_EQ(Lamp::_Meta->getIndexedMetaField(0), meta->getIndexedMetaField(0)) << "inherited fields are shared";
  EXPECT_EQ(meta->getMetaField("_nothing"), nullptr);
  EXPECT_EQ(meta->getIndexedMetaField(-1), nullptr);
  EXPECT_EQ(meta->getIndexedMetaField(3), nullptr);
}

TEST_F(CoreRegistration, ACopiedDescriptorReplacesTheFieldInOneClassOnly) {
  SpotLamp::bayRegister();
  zeMetaField* copy = Lamp::k_power->createCopy(zeObject::kCopyDeep);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->getName(), Lamp::k_power->getName()) << "the pooled name is shared";
  EXPECT_EQ(copy->getOffset(), Lamp::k_power->getOffset());
  EXPECT_EQ(copy->getTypeIndex(), Lamp::k_power->getTypeIndex());
  ASSERT_NE(copy->getDefaultMemory(), nullptr);
  EXPECT_NE(copy->getDefaultMemory(), Lamp::k_power->getDefaultMemory());
  static_cast<zeFloatMetaField*>(copy)->setDefault(5.0f);

  EXPECT_EQ(SpotLamp::_Meta->validateAndSetMetaField(0, copy), kSuccess);
  EXPECT_EQ(SpotLamp::_Meta->getIndexedMetaField(0), copy);
  EXPECT_EQ(Lamp::_Meta->getIndexedMetaField(0), Lamp::k_power);
  EXPECT_EQ(zetest::make<SpotLamp>()->_power, 5.0f);
  EXPECT_EQ(zetest::make<Lamp>()->_power, 100.0f) << "the parent keeps its field and default";

  // A bad index hands the descriptor back to the pool (the fixture counts blocks).
  EXPECT_EQ(SpotLamp::_Meta->validateAndSetMetaField(-1, Lamp::k_power->createCopy(zeObject::kCopyDeep)), kFailure);
  EXPECT_EQ(SpotLamp::_Meta->validateAndSetMetaField(0, nullptr), kFailure);
}

TEST_F(CoreRegistration, UnknownNamesAndBadRegistrationsGiveNull) {
  Lamp::bayRegister();
  EXPECT_EQ(zeMetaObject::find("NoSuchClass"), nullptr);
  EXPECT_EQ(zeMetaObject::getClass(zeMetaObject::getClassCount()), nullptr);
  EXPECT_FALSE(zeBayRegister(nullptr));

  const int classes = zeMetaObject::getClassCount();
  EXPECT_EQ(other::Lamp::getClassMetaSafe(), nullptr) << "the name Lamp is taken";
  EXPECT_EQ(other::Lamp::_instantiateFromPool(nullptr), nullptr);
  EXPECT_EQ(zeMetaObject::getClassCount(), classes);

  zeMetaObject* unnamed = nullptr;
  EXPECT_FALSE(zeBayRegister(false, &unnamed, nullptr, nullptr, nullptr, nullptr, 24, nullptr, nullptr, nullptr,
                             nullptr, nullptr));
  EXPECT_EQ(unnamed, nullptr);
}

TEST_F(CoreRegistration, UnregisteringClearsTheStaticsAndAllowsRegisteringAgain) {
  SpotLamp::bayRegister();
  ASSERT_NE(zeFloatMetaField::_MetaField, nullptr);
  BayCore::unregisterAllClasses();
  EXPECT_EQ(events.back(), "destructor:Base");
  for (zeMetaObject* meta : {SpotLamp::_Meta, Lamp::_Meta, Base::_Meta, zeObject::_Meta, zeFloatMetaField::_Meta}) {
    EXPECT_EQ(meta, nullptr);
  }
  EXPECT_EQ(Lamp::k_power, nullptr);
  EXPECT_EQ(SpotLamp::k_angle, nullptr);
  EXPECT_EQ(zeFloatMetaField::_MetaField, nullptr);
  EXPECT_EQ(zeMetaField::_MetaFieldList, nullptr);
  EXPECT_EQ(zeMetaObject::getClassCount(), 0);

  events.clear();
  ASSERT_NE(SpotLamp::getClassMetaSafe(), nullptr);
  EXPECT_EQ(events.size(), 8u) << "every step runs again";
  EXPECT_NE(Lamp::k_power, nullptr);
}

TEST_F(CoreRegistration, EnumDescriptorsLookUpByIndexNameAndValue) {
  const char* const names[] = {"LAMP_OFF", "LAMP_ON", "LAMP_BLINK"};
  int values[] = {0, 1, 7};
  zeMetaEnum* lampState = zeMetaEnum::createMetaEnum("LAMP_STATE", names, values, 3);
  ASSERT_NE(lampState, nullptr);
  EXPECT_EQ(zeMetaEnum::find("LAMP_STATE"), lampState);
  EXPECT_STREQ(lampState->getValueName(2), "LAMP_BLINK");
  EXPECT_NE(lampState->getValueName(2), names[2]) << "the names are copied";
  EXPECT_EQ(lampState->getValue(2), 7);
  EXPECT_EQ(lampState->findName("LAMP_ON"), 1);
  EXPECT_EQ(lampState->findValue(7), 2);
  EXPECT_STREQ(lampState->getNameOfValue(7), "LAMP_BLINK");
  EXPECT_EQ(lampState->findName("LAMP_DIM"), -1);
  EXPECT_EQ(lampState->findValue(3), -1);
  EXPECT_EQ(lampState->getNameOfValue(3), nullptr);
  EXPECT_EQ(lampState->getValueName(3), nullptr);

  EXPECT_EQ(zeMetaEnum::createMetaEnum(nullptr, names, values, 3), nullptr);
  EXPECT_EQ(zeMetaEnum::createMetaEnum("BAD", nullptr, values, 3), nullptr);
  EXPECT_EQ(zeMetaEnum::createMetaEnum("BAD", names, values, -1), nullptr);
  EXPECT_EQ(zeMetaEnum::find("BAD"), nullptr);
}
