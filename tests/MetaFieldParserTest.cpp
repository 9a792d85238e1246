// The text parser of the vector and matrix fields, rule by rule, with the
// destination checked for what was and was not written; then a seeded run
// over random texts.

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <math/ZEMath.h>

#include "support/Bits.h"

using Lux::Math::zeConvertStringToArray;

namespace {

constexpr float kUnset = -99.0f;  // what an element holds until the parser writes it

/// Parses `text` into three floats preset to kUnset.
struct Floats3 {
  float v[3] = {kUnset, kUnset, kUnset};
  int consumed;
  explicit Floats3(const char* text, int count = 3) { consumed = zeConvertStringToArray(text, v, count, 4, true); }
};

}  // namespace

TEST(MetaFieldParser, RefusesMissingTextDestinationCountOrWidth) {
  float v[3] = {kUnset, kUnset, kUnset};
  EXPECT_EQ(zeConvertStringToArray(nullptr, v, 3, 4, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2,3", nullptr, 3, 4, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2,3", v, 0, 4, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2,3", v, 3, 0, true), 0);
  EXPECT_EQ(Floats3("").consumed, 0);
  EXPECT_EQ(Floats3(" \t\n ").consumed, 0);
  EXPECT_BITEQ(kUnset, v[0]);
}

TEST(MetaFieldParser, CommasFollowingTheFirstNumberSeparateAllOthers) {
  Floats3 plain("1,2,3");
  EXPECT_EQ(plain.consumed, 5);
  EXPECT_BITEQ(1.0f, plain.v[0]);
  EXPECT_BITEQ(2.0f, plain.v[1]);
  EXPECT_BITEQ(3.0f, plain.v[2]);
  EXPECT_EQ(Floats3(" 1 ,\t2\n, 3  ").consumed, 12) << "blanks around commas and after the last number";
  Floats3 blanks("1 2 3");
  EXPECT_EQ(blanks.consumed, 5);
  EXPECT_BITEQ(2.0f, blanks.v[1]);
  Floats3 adjacent("1-2-3");
  EXPECT_EQ(adjacent.consumed, 5);
  EXPECT_BITEQ(-2.0f, adjacent.v[1]);
  EXPECT_BITEQ(-3.0f, adjacent.v[2]);
  Floats3 points("1.2.3", 2);
  EXPECT_EQ(points.consumed, 5);
  EXPECT_BITEQ(static_cast<float>(0.3), points.v[1]) << "a point begins the next number";

  Floats3 lateComma("1 2,3");
  EXPECT_EQ(lateComma.consumed, 0);
  EXPECT_BITEQ(2.0f, lateComma.v[1]) << "stored before the failure";
  EXPECT_BITEQ(kUnset, lateComma.v[2]);
  Floats3 missingComma("1,2 3");
  EXPECT_EQ(missingComma.consumed, 0);
  EXPECT_BITEQ(2.0f, missingComma.v[1]);
  EXPECT_BITEQ(kUnset, missingComma.v[2]);
  EXPECT_EQ(Floats3("1,,2").consumed, 0);
  EXPECT_EQ(Floats3("1,2,").consumed, 0);
}

TEST(MetaFieldParser, OneOpenerDemandsItsCloserAfterExactlyCountNumbers) {
  EXPECT_EQ(Floats3(" ( 1 , 2 , 3 ) ").consumed, 14);
  EXPECT_EQ(Floats3("[1 2 3]").consumed, 7);
  EXPECT_EQ(Floats3("{1,2,3}tail").consumed, 7);
  EXPECT_EQ(Floats3("<1,2,3>").consumed, 7);
  Floats3 unclosed("(1,2,3");
  EXPECT_EQ(unclosed.consumed, 0);
  EXPECT_BITEQ(3.0f, unclosed.v[2]) << "stored before the failure";
  EXPECT_EQ(Floats3("(1,2,3,4)").consumed, 0);
  EXPECT_EQ(Floats3("(1,2)").consumed, 0);
  EXPECT_EQ(Floats3("(1,2,3]").consumed, 0);
  EXPECT_EQ(Floats3("((1,2,3))").consumed, 0) << "only one opener";
  EXPECT_EQ(Floats3("1,2,3)").consumed, 5) << "a closer without an opener is left alone";
}

TEST(MetaFieldParser, WithoutBracketsWhatFollowsTheLastNumberIsIgnored) {
  EXPECT_EQ(Floats3("1,2,3,4").consumed, 5);
  EXPECT_EQ(Floats3("1,2,3xyz").consumed, 5);
  EXPECT_EQ(Floats3("1 2 3 4").consumed, 6);
  Floats3 one("7,8", 1);
  EXPECT_EQ(one.consumed, 1);
  EXPECT_BITEQ(kUnset, one.v[1]) << "never more than count elements";
}

TEST(MetaFieldParser, FloatingNumbersTakeAPointAndAnExponentButNoPlusNanOrInf) {
  Floats3 forms(".5,-.25,1e3");
  EXPECT_EQ(forms.consumed, 11);
  EXPECT_BITEQ(0.5f, forms.v[0]);
  EXPECT_BITEQ(-0.25f, forms.v[1]);
  EXPECT_BITEQ(1000.0f, forms.v[2]);
  Floats3 exponents("5.,1.5E-2,2e+1");
  EXPECT_BITEQ(5.0f, exponents.v[0]);
  EXPECT_BITEQ(static_cast<float>(0.015), exponents.v[1]);
  EXPECT_BITEQ(20.0f, exponents.v[2]);
  EXPECT_BITEQ(-0.0f, Floats3("-0 0 0").v[0]);

  for (const char* refused : {"+1,2,3", "1e,2,3", "1e+,2,3", ".", "-", "-.", "nan", "inf", "-inf", "x1"}) {
    Floats3 r(refused);
    EXPECT_EQ(r.consumed, 0) << refused;
    EXPECT_BITEQ(kUnset, r.v[0]) << refused;
  }
}

TEST(MetaFieldParser, FloatsAreRoundedFromTheDoubleTheTextConvertsTo) {
  // Just above the float halfway point 1 + 2^-24, but the double nearest to
  // the text is that halfway point itself, which rounds to even: 1.
  Floats3 halfway("1.00000005960464477539063", 1);
  EXPECT_BITEQ(1.0f, halfway.v[0]);
  double d[2];
  EXPECT_EQ(zeConvertStringToArray("0.1 -1e-320", d, 2, 8, true), 11);
  EXPECT_BITEQ(0.1, d[0]);
  EXPECT_BITEQ(-1e-320, d[1]);
}

TEST(MetaFieldParser, IntegersAreCutToTheElementWidthWithoutARangeCheck) {
  std::uint8_t b[4] = {9, 9, 9, 9};
  EXPECT_EQ(zeConvertStringToArray("256,-1,7", b, 3, 1, false), 8);
  EXPECT_EQ(b[0], 0);
  EXPECT_EQ(b[1], 255);
  EXPECT_EQ(b[2], 7);
  EXPECT_EQ(b[3], 9);
  std::uint16_t s[2];
  EXPECT_EQ(zeConvertStringToArray("65537 -2", s, 2, 2, false), 8);
  EXPECT_EQ(s[0], 1);
  EXPECT_EQ(s[1], 65534);
  std::int32_t i[2];
  EXPECT_EQ(zeConvertStringToArray("(-2147483648,2147483647)", i, 2, 4, false), 24);
  EXPECT_EQ(i[0], INT32_MIN);
  EXPECT_EQ(i[1], INT32_MAX);
  std::int64_t l[2] = {0, 0};
  EXPECT_EQ(zeConvertStringToArray("-5", l, 1, 8, false), 2);
  EXPECT_EQ(l[0], -5) << "sign-extended";
  EXPECT_EQ(zeConvertStringToArray("1e3", l, 1, 8, false), 1) << "the exponent is not read";

  std::int32_t r[2] = {9, 9};
  for (const char* refused : {"1.5,2", ".5,2", "+1,2", "-,2"}) {
    EXPECT_EQ(zeConvertStringToArray(refused, r, 2, 4, false), 0) << refused;
  }
  EXPECT_EQ(r[1], 9);
}

TEST(MetaFieldParser, ElementWidthsWithoutAStoreFailWithNothingWritten) {
  unsigned char bytes[16];
  std::memset(bytes, 0xAB, sizeof bytes);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, 2, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, 1, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, 3, false), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, -4, false), 0);
  for (unsigned char b : bytes) EXPECT_EQ(b, 0xAB);
}

TEST(MetaFieldParser, NumbersOfMoreThan511CharactersAreRefused) {
  const std::string longest = std::string(510, '0') + "7";
  const std::string tooLong = "0" + longest;
  Floats3 accepted(longest.c_str(), 1);
  EXPECT_EQ(accepted.consumed, 511);
  EXPECT_BITEQ(7.0f, accepted.v[0]);
  Floats3 refused(tooLong.c_str(), 1);
  EXPECT_EQ(refused.consumed, 0);
  EXPECT_BITEQ(kUnset, refused.v[0]);
  std::int32_t i = 9;
  EXPECT_EQ(zeConvertStringToArray(tooLong.c_str(), &i, 1, 4, false), 0);
  EXPECT_EQ(zeConvertStringToArray(("-" + std::string(509, '0') + "1").c_str(), &i, 1, 4, false), 511);
  EXPECT_EQ(i, -1);
  EXPECT_EQ(zeConvertStringToArray(("-" + longest).c_str(), &i, 1, 4, false), 0) << "the sign counts";
  EXPECT_EQ(i, -1);
}

namespace {

const char kAlphabet[] = "0123456789-+.eE,,  \t\n()[]{}<>xnaif";

char randomCharacter(std::mt19937& random) { return kAlphabet[random() % (sizeof kAlphabet - 1)]; }

std::string randomDigits(std::mt19937& random, unsigned int most) {
  std::string digits;
  for (unsigned int n = random() % (most + 1); n > 0; --n) digits += "0123456789"[random() % 10];
  return digits;
}

/// Something close to a list of numbers: an optional opener, numbers with an
/// optional sign (in floating mode also point and exponent), one kind of
/// separator, an optional closer and a random tail; at times one character
/// changed at random.
std::string nearlyAList(std::mt19937& random, int count, bool floating) {
  static const char* const kSeparators[] = {",", " ", "", " , "};
  const char* separator = kSeparators[random() % 4];
  std::string text = random() % 2 ? std::string(1, "([{<"[random() % 4]) : "";
  const int numbers = count - 1 + static_cast<int>(random() % 3);
  for (int i = 0; i < numbers; ++i) {
    if (i > 0) text += separator;
    if (random() % 3 == 0) text += '-';
    text += "123456789"[random() % 9] + randomDigits(random, 2);
    if (!floating) continue;
    if (random() % 2) text += "." + randomDigits(random, 3);
    if (random() % 4 == 0) text += std::string("e") + "+-"[random() % 2] + randomDigits(random, 2);
  }
  if (random() % 2) text += ")]}>"[random() % 4];
  for (unsigned int tail = random() % 4; tail > 0; --tail) text += randomCharacter(random);
  if (!text.empty() && random() % 3 == 0) text[random() % text.size()] = randomCharacter(random);
  return text;
}

}  // namespace

// Random texts, parsed from buffers of exactly their length into
// destinations of exactly count elements (the sanitizer build reports any
// access past either). The result must lie within the text, guard bytes
// behind the elements stay untouched, and parsing just the consumed prefix
// gives the same result and the same elements.
TEST(MetaFieldParser, RandomTextsNeverReachPastTheTextOrTheElements) {
  std::mt19937 random(20240611u);
  const int widths[] = {1, 2, 4, 8};
  int parsed = 0;
  for (int round = 0; round < 20000; ++round) {
    const bool floating = random() % 2 == 0;
    const int count = 1 + static_cast<int>(random() % 6);
    const int width = widths[random() % 4];
    std::string text;
    if (random() % 2) {
      text = nearlyAList(random, count, floating);
    } else {
      for (unsigned int length = random() % 40; length > 0; --length) text += randomCharacter(random);
    }
    if (random() % 50 == 0) text.insert(random() % (text.size() + 1), std::string(505 + random() % 12, '1'));

    std::vector<char> exact(text.begin(), text.end());
    exact.push_back('\0');
    const std::size_t bytes = static_cast<std::size_t>(count * width);
    std::vector<unsigned char> elements(bytes);
    const int consumed = zeConvertStringToArray(exact.data(), elements.data(), count, width, floating);
    ASSERT_GE(consumed, 0) << text;
    ASSERT_LE(consumed, static_cast<int>(text.size())) << text;

    std::vector<unsigned char> guarded(elements);
    guarded.resize(bytes + 8, 0xCD);
    ASSERT_EQ(zeConvertStringToArray(exact.data(), guarded.data(), count, width, floating), consumed) << text;
    for (std::size_t i = bytes; i < guarded.size(); ++i) ASSERT_EQ(guarded[i], 0xCD) << text;
    if (consumed > 0) {
      ++parsed;
      const std::string prefix = text.substr(0, static_cast<std::size_t>(consumed));
      std::vector<unsigned char> fromPrefix(bytes);
      ASSERT_EQ(zeConvertStringToArray(prefix.c_str(), fromPrefix.data(), count, width, floating), consumed) << text;
      ASSERT_EQ(fromPrefix, elements) << text;
    }
  }
  EXPECT_GT(parsed, 2000) << "the texts must exercise the accepting paths too";
}
