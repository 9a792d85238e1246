// The generic field behaviours on a class with float, double, int, enum,
// array and list fields, and the services on all fields of an object: print,
// set from text, traverse, and the byte record written in either byte order.

#include <cstddef>
#include <string>
#include <vector>

#include "support/Bits.h"
#include "support/CoreFixture.h"
#include "support/CoreHelpers.h"
#include "support/CoreTestLists.h"

using namespace Lux;
using testlists::FloatList;
using zetest::make;
using zetest::readRecord;
using zetest::recordOf;
using zetest::textOf;

namespace fields {

// An array field type as array fields are made: an element type plus a
// reflected "_num" at byte 88.
class IntArrayField : public zeIntMetaField {
  ZE_DECLARE_FIELD_CLASS(, IntArrayField)
  ZE_DECLARE_FIELD_SLOT(, _num)

 public:
  int _num;

  unsigned int computeSize() override { return 4u * static_cast<unsigned int>(_num); }
  void endianSwapMemory(void* memory, int count) const override {
    zeIntMetaField::_MetaField->endianSwapMemory(memory, count * _num);
  }
  static void bayRegisterInitialize() {
    zetest::declareFields(_Meta, {{&zeIntMetaField::_instantiateFromPool, "_num", &k_num, 88}});
    static_cast<zeIntMetaField*>(k_num)->setDefault(1);
  }
};
ZE_DEFINE_FIELD_SLOT(IntArrayField, _num)
ZE_IMPLEMENT_FIELD_CLASS(IntArrayField, zeIntMetaField, zeNoLibraryInit, &IntArrayField::bayRegisterInitialize)

enum GaugeMode : int { GAUGE_OFF, GAUGE_ON, GAUGE_AUTO };

class Gauge : public zeObject {
  ZE_DECLARE_CLASS(, Gauge)
  ZE_DECLARE_FIELD_SLOT(, _level)
  ZE_DECLARE_FIELD_SLOT(, _scale)
  ZE_DECLARE_FIELD_SLOT(, _count)
  ZE_DECLARE_FIELD_SLOT(, _mode)
  ZE_DECLARE_FIELD_SLOT(, _limits)
  ZE_DECLARE_FIELD_SLOT(, _samples)

 public:
  float _level;
  double _scale;
  int _count;
  int _mode;
  int _limits[3];
  zeObject* _samples;  // a FloatList

  static void bayRegisterInitialize() {
    zetest::declareFields(
        _Meta,
        {{&zeFloatMetaField::_instantiateFromPool, "_level", &k_level, offsetof(Gauge, _level)},
         {&zeDoubleMetaField::_instantiateFromPool, "_scale", &k_scale, offsetof(Gauge, _scale)},
         {&zeIntMetaField::_instantiateFromPool, "_count", &k_count, offsetof(Gauge, _count)},
         {&zeEnumMetaField::_instantiateFromPool, "_mode", &k_mode, offsetof(Gauge, _mode)},
         {&IntArrayField::_instantiateFromPool, "_limits", &k_limits, offsetof(Gauge, _limits)},
         {&zeObjectReferenceMetaField::_instantiateFromPool, "_samples", &k_samples, offsetof(Gauge, _samples)}},
        [](zeMetaObject* meta, int first) {
          static_cast<IntArrayField*>(meta->getIndexedMetaField(first + 4))->_num = 3;
        });
    static_cast<zeFloatMetaField*>(k_level)->setDefault(1.5f);
    static const char* const modes[] = {"GAUGE_OFF", "GAUGE_ON", "GAUGE_AUTO"};
    int values[] = {GAUGE_OFF, GAUGE_ON, GAUGE_AUTO};
    static zeMetaEnum* modeEnum = zeMetaEnum::createMetaEnum("GAUGE_MODE", modes, values, 3);
    static_cast<zeEnumMetaField*>(k_mode)->setMetaEnum(modeEnum);
    static_cast<zeObjectReferenceMetaField*>(k_samples)->setReferenceType(FloatList::getClassMetaSafe());
  }
};
ZE_DEFINE_FIELD_SLOT(Gauge, _level)
ZE_DEFINE_FIELD_SLOT(Gauge, _scale)
ZE_DEFINE_FIELD_SLOT(Gauge, _count)
ZE_DEFINE_FIELD_SLOT(Gauge, _mode)
ZE_DEFINE_FIELD_SLOT(Gauge, _limits)
ZE_DEFINE_FIELD_SLOT(Gauge, _samples)
ZE_IMPLEMENT_CLASS(Gauge, zeObject, zeNoLibraryInit, &Gauge::bayRegisterInitialize, nullptr)

}  // namespace fields

using namespace fields;

namespace {

using CoreField = zetest::CoreTest;

zeSmartPointer<FloatList> samplesOf(std::vector<float> values) {
  zeSmartPointer<FloatList> list = make<FloatList>();
  for (float v : values) list->appendElement(v);
  return list;
}

// A gauge with every field set; its list holds 0.5 and -2.
zeSmartPointer<Gauge> filledGauge() {
  zeSmartPointer<Gauge> gauge = make<Gauge>();
  gauge->_level = 3.25f;
  gauge->_scale = 0.25;
  gauge->_count = 7;
  gauge->_mode = GAUGE_AUTO;
  for (int i = 0; i < 3; ++i) gauge->_limits[i] = i + 1;
  zeObjectReferenceMetaField::setReferenced(&gauge->_samples, samplesOf({0.5f, -2.0f}).get());
  return gauge;
}

int countVisit(zeObject*, zeMetaField* field, void* data) {
  auto* names = static_cast<std::vector<std::string>*>(data);
  names->push_back(field->getName());
  return std::string(field->getName()) == "_mode" && names->size() > 100 ? 5 : 0;
}

}  // namespace

static_assert(offsetof(IntArrayField, _num) == 88, "an array field's own data starts at byte 88");

TEST_F(CoreField, SizesDefaultsAndResetMethods) {
  Gauge::bayRegister();
  EXPECT_EQ(Gauge::k_limits->getSize(), 12u);
  EXPECT_EQ(Gauge::k_limits->getElementCount(), 3);
  EXPECT_EQ(Gauge::k_limits->getElementBytes(), 4u);
  EXPECT_EQ(Gauge::k_level->getElementCount(), 1);
  EXPECT_EQ(Gauge::k_samples->getSize(), 8u);
  EXPECT_TRUE(Gauge::k_samples->hasVariableIoSize());
  EXPECT_FALSE(Gauge::k_limits->hasVariableIoSize());

  zeSmartPointer<Gauge> gauge = filledGauge();
  Gauge::k_count->setResetMethod(zeMetaField::kResetByNoReset);
  Gauge::_Meta->resetFields(gauge.get(), true);
  EXPECT_EQ(gauge->_level, 1.5f) << "by value, from the default";
  EXPECT_EQ(gauge->_scale, 0.0) << "no default: zero";
  EXPECT_EQ(gauge->_count, 7) << "no reset";
  EXPECT_EQ(gauge->_samples, nullptr) << "the list was released";

  // A reference field's default object: copied by value, shared by reference.
  zeSmartPointer<FloatList> shared = samplesOf({9.0f});
  auto* samples = static_cast<zeObjectReferenceMetaField*>(Gauge::k_samples);
  samples->setDefault(shared.get());
  EXPECT_EQ(shared->getReferenceCount(), 2u);
  zeSmartPointer<Gauge> byValue = make<Gauge>();
  ASSERT_NE(byValue->_samples, nullptr);
  EXPECT_NE(byValue->_samples, shared.get());
  EXPECT_TRUE(byValue->_samples->isAlikeTo(shared.get(), zeObject::kCopyDeep));
  samples->setResetMethod(zeMetaField::kResetByReference);
  zeSmartPointer<Gauge> byReference = make<Gauge>();
  EXPECT_EQ(byReference->_samples, shared.get());
  samples->setDefault(nullptr);
  EXPECT_EQ(shared->getReferenceCount(), 2u) << "the default's reference is dropped";
}

TEST_F(CoreField, CopiesFollowEachFieldsMethod) {
  zeSmartPointer<Gauge> original = filledGauge();
  zeSmartPointer<zeObject> deep = zeSmartPointer<zeObject>::adopt(original->createCopy(zeObject::kCopyDeep));
  Gauge* copy = static_cast<Gauge*>(deep.get());
  EXPECT_EQ(copy->_level, 3.25f);
  EXPECT_EQ(copy->_limits[2], 3);
  ASSERT_NE(copy->_samples, nullptr);
  EXPECT_NE(copy->_samples, original->_samples) << "by value: the list is copied";
  EXPECT_FALSE(copy->isAlikeTo(original.get(), zeObject::kCopyDeep)) << "the exact comparison sees two lists";
  Gauge::k_samples->setCompareMethod(zeMetaField::kCompareDeep);
  EXPECT_TRUE(copy->isAlikeTo(original.get(), zeObject::kCopyDeep));
  EXPECT_FALSE(copy->isAlikeTo(original.get(), zeObject::kCopyShallow));

  zeSmartPointer<zeObject> shallow = zeSmartPointer<zeObject>::adopt(original->createCopy(zeObject::kCopyShallow));
  EXPECT_EQ(static_cast<Gauge*>(shallow.get())->_samples, original->_samples) << "shallow: shared";
  EXPECT_TRUE(shallow->isAlikeTo(original.get(), zeObject::kCopyShallow));

  Gauge::k_samples->setCopyMethod(zeMetaField::kCopyByReference);
  Gauge::k_count->setCopyMethod(zeMetaField::kCopyByReset);
  Gauge::k_level->setCopyMethod(zeMetaField::kCopyByNoCopy);
  Gauge::k_scale->setCopyMethod(zeMetaField::kCopyByValueShallow);
  zeSmartPointer<zeObject> mixed = zeSmartPointer<zeObject>::adopt(original->createCopy(zeObject::kCopyDeep));
  const Gauge* m = static_cast<Gauge*>(mixed.get());
  EXPECT_EQ(m->_samples, original->_samples);
  EXPECT_EQ(original->_samples->getReferenceCount(), 3u);
  EXPECT_EQ(m->_count, 0) << "reset instead of copied";
  EXPECT_EQ(m->_level, 1.5f) << "not copied: the default stays";
  EXPECT_EQ(m->_scale, 0.25);
}

TEST_F(CoreField, ComparisonsOrderBytesAndDecideAlikeness) {
  zeSmartPointer<Gauge> a = filledGauge();
  zeSmartPointer<Gauge> b = filledGauge();
  EXPECT_EQ(Gauge::k_count->compare(a.get(), b.get()), 0);
  b->_count = 8;
  EXPECT_EQ(Gauge::k_count->compare(a.get(), b.get()), -1);
  EXPECT_EQ(Gauge::k_count->compare(b.get(), a.get()), 1);
  EXPECT_FALSE(Gauge::k_count->isAlikeCompareExactly(a.get(), b.get()));
  EXPECT_TRUE(Gauge::k_count->isAlikeCompareNoCompare(a.get(), b.get()));
  Gauge::k_count->setCompareMethod(zeMetaField::kCompareNoCompare);
  Gauge::k_samples->setCompareMethod(zeMetaField::kCompareDeep);
  EXPECT_TRUE(a->isAlikeTo(b.get(), zeObject::kCopyDeep)) << "the count ignored, the lists alike";
  static_cast<FloatList*>(b->_samples)->setElement(1, -3.0f);
  EXPECT_FALSE(Gauge::k_samples->isAlikeCompareDeep(a.get(), b.get()));
  // Byte order of the memory: -2 is 00 00 00 c0, -3 is 00 00 40 c0.
  EXPECT_EQ(FloatList::k_data->compare(a->_samples, b->_samples), -1);
}

TEST_F(CoreField, TextOfEveryFieldAndArraysElementByElement) {
  zeSmartPointer<Gauge> gauge = filledGauge();
  // Each element parses where the previous one stopped; one that consumes
  // nothing fails the whole field.
  EXPECT_EQ(Gauge::k_limits->setByString(gauge.get(), "4 -5 6 rest", nullptr), 6);
  EXPECT_EQ(gauge->_limits[1], -5);
  EXPECT_EQ(Gauge::k_limits->setByString(gauge.get(), "7 x 9", nullptr), 0);
  EXPECT_EQ(gauge->_limits[0], 7) << "elements before the failure stay";
  EXPECT_EQ(gauge->_limits[2], 6);

  // Enough digits to give the value back; parsing counts the blanks it skips.
  gauge->_level = 0.1f;
  gauge->_scale = 0.1;
  EXPECT_EQ(textOf(Gauge::k_level, gauge.get()), "0.100000001");
  EXPECT_EQ(textOf(Gauge::k_scale, gauge.get()), "0.10000000000000001");
  EXPECT_EQ(Gauge::k_scale->setByString(gauge.get(), " -0.5 rest", nullptr), 5);
  EXPECT_EQ(gauge->_scale, -0.5);
  EXPECT_EQ(Gauge::k_level->setByString(gauge.get(), "0.1", nullptr), 3);
  EXPECT_EQ(gauge->_level, 0.1f);

  // Enum fields take constant names; a value without one is a number.
  EXPECT_EQ(Gauge::k_mode->setByString(gauge.get(), "GAUGE_ON,", nullptr), 8);
  EXPECT_EQ(gauge->_mode, GAUGE_ON);
  EXPECT_EQ(Gauge::k_mode->setByString(gauge.get(), "GAUGE_DIM", nullptr), 0);
  EXPECT_EQ(gauge->setFieldByString("_mode", "5"), kSuccess);
  EXPECT_EQ(textOf(Gauge::k_mode, gauge.get()), "5");
  EXPECT_EQ(gauge->setFieldByString("_count", "many"), kFailure);
  EXPECT_EQ(gauge->setFieldByString("_samples", "FloatList"), kFailure) << "references do not parse";
  EXPECT_EQ(gauge->setFieldByString("_nothing", "1"), kFailure);
  EXPECT_EQ(gauge->setFieldByString(nullptr, "1"), kFailure);
}

TEST_F(CoreField, PrintAndTraverseReachTheReferencedList) {
  zeSmartPointer<Gauge> gauge = filledGauge();
  testing::internal::CaptureStdout();
  gauge->printFields(2);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "  _level = 3.25\n  _scale = 0.25\n  _count = 7\n  _mode = GAUGE_AUTO\n  _limits = 1 2 3\n"
            "  _samples = FloatList\n    _data = 0.5 -2\n");

  std::vector<std::string> names;
  EXPECT_EQ(gauge->traverseFields(&countVisit, &names), 0);
  EXPECT_EQ(names, (std::vector<std::string>{"_level", "_scale", "_count", "_mode", "_limits", "_samples", "_data"}));
  names.resize(101);  // from now on the visit stops at "_mode"
  EXPECT_EQ(gauge->traverseFields(&countVisit, &names), 5);
  EXPECT_EQ(names.size(), 105u);
}

TEST_F(CoreField, RawMemoryAndByteSwapsGoElementByElement) {
  zeSmartPointer<Gauge> gauge = filledGauge();
  gauge->_scale = 1.0;  // 3f f0 00 ... in memory order reversed
  unsigned char stored[8];
  EXPECT_EQ(Gauge::k_scale->getIoSize(gauge.get()), 8u);
  EXPECT_EQ(Gauge::k_scale->writeRawFieldMemory(&gauge->_scale, stored, nullptr, true), 8);
  EXPECT_EQ(stored[0], 0x3f);
  EXPECT_EQ(stored[1], 0xf0);
  gauge->_scale = 0.0;
  EXPECT_EQ(Gauge::k_scale->readRawFieldMemory(&gauge->_scale, stored, nullptr, true), 8);
  EXPECT_EQ(gauge->_scale, 1.0);

  Gauge::k_limits->endianSwap(gauge.get());
  EXPECT_EQ(gauge->_limits[0], 0x01000000);
  EXPECT_EQ(gauge->_limits[2], 0x03000000);
  FloatList::k_data->endianSwap(gauge->_samples);
  EXPECT_EQ(zetest::bitsOf(static_cast<FloatList*>(gauge->_samples)->data()[1]), 0x000000c0u) << "-2 is 0xc0000000";
}

TEST_F(CoreField, RecordsReadBackInEitherByteOrder) {
  zeSmartPointer<Gauge> original = filledGauge();
  const std::vector<unsigned char> native = recordOf(original.get(), false);
  const std::vector<unsigned char> swapped = recordOf(original.get(), true);
  ASSERT_EQ(native.size(), swapped.size());
  EXPECT_NE(native, swapped);
  Gauge::k_samples->setCompareMethod(zeMetaField::kCompareDeep);

  for (bool swap : {false, true}) {
    const std::vector<unsigned char>& record = swap ? swapped : native;
    zeSmartPointer<Gauge> back = make<Gauge>();
    EXPECT_EQ(readRecord(back.get(), record, swap), kSuccess);
    EXPECT_TRUE(back->isAlikeTo(original.get(), zeObject::kCopyDeep));
    EXPECT_EQ(recordOf(back.get(), swap), record) << "written again, the same bytes";
    EXPECT_EQ(readRecord(back.get(), record, !swap), kFailure) << "the other byte order is refused";
  }
}

TEST_F(CoreField, TruncatedCorruptAndForeignRecordsAreRefusedWithoutAChange) {
  const std::vector<unsigned char> record = recordOf(filledGauge().get(), true);
  zeSmartPointer<Gauge> target = make<Gauge>();
  target->_count = 42;
  const std::vector<unsigned char> before = recordOf(target.get(), false);

  for (std::size_t length = 0; length < record.size(); ++length) {
    EXPECT_EQ(target->readRecord(record.data(), static_cast<unsigned int>(length), true), kFailure) << length;
  }
  for (std::size_t i = 0; i < record.size(); ++i) {
    std::vector<unsigned char> corrupt = record;
    corrupt[i] ^= 0x10;
    EXPECT_EQ(target->readRecord(corrupt.data(), static_cast<unsigned int>(corrupt.size()), true), kFailure) << i;
  }
  EXPECT_EQ(recordOf(target.get(), false), before);

  // A list's record is not a gauge's, and a gauge's list must be a FloatList.
  EXPECT_EQ(readRecord(target.get(), recordOf(samplesOf({1.0f}).get(), false), false), kFailure);
  zeSmartPointer<Gauge> odd = filledGauge();
  zeObjectReferenceMetaField::setReferenced(&odd->_samples, make<Gauge>().get());
  EXPECT_EQ(readRecord(target.get(), recordOf(odd.get(), false), false), kFailure);
  EXPECT_EQ(recordOf(target.get(), false), before);

  // An object that holds itself cannot be written.
  zeObjectReferenceMetaField::setReferenced(&odd->_samples, odd.get());
  EXPECT_EQ(odd->getRecordSize(), 0u);
  std::vector<unsigned char> buffer(4096);
  EXPECT_EQ(odd->writeRecord(buffer.data(), 4096, false), kFailure);
  zeObjectReferenceMetaField::setReferenced(&odd->_samples, nullptr);
}
