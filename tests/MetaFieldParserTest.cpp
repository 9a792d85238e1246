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

constexpr float U = -99.0f;  // what an element holds until the parser writes it

/// A text parsed into `count` of three floats preset to U, and what must come
/// of it: the characters consumed and all three elements afterwards.
struct FloatCase {
  const char* text;
  int count;
  int consumed;
  float after[3];
};

const FloatCase kFloatCases[] = {
    // Nothing to parse.
    {"", 3, 0, {U, U, U}},
    {" \t\n ", 3, 0, {U, U, U}},
    // A comma after the first number makes commas separate all others; without
    // one, blanks or nothing separate them. Blanks after the last number are consumed.
    {"1,2,3", 3, 5, {1, 2, 3}},
    {" 1 ,\t2\n, 3  ", 3, 12, {1, 2, 3}},
    {"1 2 3", 3, 5, {1, 2, 3}},
    {"1-2-3", 3, 5, {1, -2, -3}},
    {"1.2.3", 2, 5, {1.2, 0.3, U}},
    {"1 2,3", 3, 0, {1, 2, U}},
    {"1,2 3", 3, 0, {1, 2, U}},
    {"1,,2", 3, 0, {1, U, U}},
    {"1,2,", 3, 0, {1, 2, U}},
    // One opener demands its closer after exactly count numbers; elements
    // stored before a failure stay.
    {" ( 1 , 2 , 3 ) ", 3, 14, {1, 2, 3}},
    {"[1 2 3]", 3, 7, {1, 2, 3}},
    {"{1,2,3}tail", 3, 7, {1, 2, 3}},
    {"<1,2,3>", 3, 7, {1, 2, 3}},
    {"(1,2,3", 3, 0, {1, 2, 3}},
    {"(1,2,3,4)", 3, 0, {1, 2, 3}},
    {"(1,2)", 3, 0, {1, 2, U}},
    {"(1,2,3]", 3, 0, {1, 2, 3}},
    {"((1,2,3))", 3, 0, {U, U, U}},
    {"1,2,3)", 3, 5, {1, 2, 3}},
    // Without brackets, what follows the last number is ignored.
    {"1,2,3,4", 3, 5, {1, 2, 3}},
    {"1,2,3xyz", 3, 5, {1, 2, 3}},
    {"1 2 3 4", 3, 6, {1, 2, 3}},
    {"7,8", 1, 1, {7, U, U}},
    // A point and an exponent, but no plus, nan or inf.
    {".5,-.25,1e3", 3, 11, {0.5, -0.25, 1000}},
    {"5.,1.5E-2,2e+1", 3, 14, {5, 0.015, 20}},
    {"-0 0 0", 3, 6, {-0.0f, 0, 0}},
    {"+1,2,3", 3, 0, {U, U, U}},
    {"1e,2,3", 3, 0, {U, U, U}},
    {"1e+,2,3", 3, 0, {U, U, U}},
    {".", 3, 0, {U, U, U}},
    {"-", 3, 0, {U, U, U}},
    {"-.", 3, 0, {U, U, U}},
    {"nan", 3, 0, {U, U, U}},
    {"-inf", 3, 0, {U, U, U}},
    {"x1", 3, 0, {U, U, U}},
    // Rounded from the double the text converts to: that is the float halfway
    // point 1 + 2^-24 itself (the text lies just above it), which rounds to even.
    {"1.00000005960464477539063", 1, 25, {1, U, U}},
};

/// Parses `text` into `count` floats and expects `consumed` and `after`.
void expectFloats(const char* text, int count, int consumed, const float (&after)[3]) {
  float v[3] = {U, U, U};
  EXPECT_EQ(zeConvertStringToArray(text, v, count, 4, true), consumed) << '"' << text << '"';
  for (int i = 0; i < 3; ++i) EXPECT_BITEQ(after[i], v[i]) << '"' << text << "\" element " << i;
}

}  // namespace

TEST(MetaFieldParser, FloatTextsAreAcceptedOrRefusedRuleByRule) {
  for (const FloatCase& c : kFloatCases) expectFloats(c.text, c.count, c.consumed, c.after);
  double d[2];
  EXPECT_EQ(zeConvertStringToArray("0.1 -1e-320", d, 2, 8, true), 11);
  EXPECT_BITEQ(0.1, d[0]);
  EXPECT_BITEQ(-1e-320, d[1]);
}

TEST(MetaFieldParser, IntegersAreCutToTheElementWidthWithoutARangeCheck) {
  std::uint8_t b[4] = {9, 9, 9, 9};
  EXPECT_EQ(zeConvertStringToArray("256,-1,7", b, 3, 1, false), 8);
  EXPECT_EQ(std::vector<int>(b, b + 4), (std::vector<int>{0, 255, 7, 9}));
  std::uint16_t s[3] = {9, 9, 9};
  EXPECT_EQ(zeConvertStringToArray("65537 -2", s, 2, 2, false), 8);
  EXPECT_EQ(std::vector<int>(s, s + 3), (std::vector<int>{1, 65534, 9}));
  std::int32_t i[2];
  EXPECT_EQ(zeConvertStringToArray("(-2147483648,2147483647)", i, 2, 4, false), 24);
  EXPECT_EQ(std::vector<std::int32_t>(i, i + 2), (std::vector<std::int32_t>{INT32_MIN, INT32_MAX}));
  std::int64_t l[2] = {0, 9};
  EXPECT_EQ(zeConvertStringToArray("-5", l, 1, 8, false), 2);
  EXPECT_EQ(std::vector<std::int64_t>(l, l + 2), (std::vector<std::int64_t>{-5, 9})) << "sign-extended";
  EXPECT_EQ(zeConvertStringToArray("1e3", l, 1, 8, false), 1) << "the exponent is not read";

  std::int32_t r[2] = {9, 9};
  for (const char* refused : {"1.5,2", ".5,2", "+1,2", "-,2"}) {
    EXPECT_EQ(zeConvertStringToArray(refused, r, 2, 4, false), 0) << refused;
  }
  EXPECT_EQ(r[1], 9);
}

TEST(MetaFieldParser, MissingArgumentsAndWidthsWithoutAStoreFailWithNothingWritten) {
  unsigned char bytes[16];
  std::memset(bytes, 0xAB, sizeof bytes);
  EXPECT_EQ(zeConvertStringToArray(nullptr, bytes, 3, 4, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2,3", nullptr, 3, 4, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2,3", bytes, 0, 4, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2,3", bytes, 3, 0, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, 2, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, 1, true), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, 3, false), 0);
  EXPECT_EQ(zeConvertStringToArray("1,2", bytes, 2, -4, false), 0);
  for (unsigned char b : bytes) EXPECT_EQ(b, 0xAB);
}

TEST(MetaFieldParser, NumbersOfMoreThan511CharactersAreRefused) {
  const std::string longest = std::string(510, '0') + "7";
  const std::string tooLong = "0" + longest;
  expectFloats(longest.c_str(), 1, 511, {7, U, U});
  expectFloats(tooLong.c_str(), 1, 0, {U, U, U});
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
