// Runs every operation of the inline-operation table, compiled here with this
// build's flags, and compares the bits with those the library's own build
// recorded (zeInlineReference); then asks zeCheckExactResults(). Prints each
// operation that differs with its first differing value.
//
//   zeInlineCheck REFERENCE                    exit 0 when everything matches
//   zeInlineCheck REFERENCE --expect-inexact   for a build without the
//       package's flags: exit 0 when the table differs and the check names
//       every family
//
// Two NaNs match whatever their signs: when two NaNs meet in an addition or
// a multiplication, the written order does not fix which one the processor
// passes on (a compiler may swap the operands), and their signs may differ.
// Their payloads are compared: every NaN in play has the default payload.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

#include "InlineOperations.h"

namespace {

std::vector<std::string> tokens(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string t; in >> t;) out.push_back(t);
  return out;
}

/// The bits of a float ('f') or double ('d') token when it is a NaN, with the sign cleared.
bool nanWithoutSign(const std::string& token, unsigned long long& bits) {
  if (token.empty() || (token[0] != 'f' && token[0] != 'd')) return false;
  const unsigned long long value = std::strtoull(token.c_str() + 1, nullptr, 16);
  const bool isFloat = token[0] == 'f';
  const unsigned long long exponent = isFloat ? 0x7F800000ull : 0x7FF0000000000000ull;
  const unsigned long long sign = isFloat ? 0x80000000ull : 0x8000000000000000ull;
  bits = value & ~sign;
  return (bits & exponent) == exponent && (bits & ~exponent) != 0;
}

bool sameValue(const std::string& mine, const std::string& reference) {
  if (mine == reference) return true;
  unsigned long long a, b;
  return mine[0] == reference[0] && nanWithoutSign(mine, a) && nanWithoutSign(reference, b) && a == b;
}

}  // namespace

int main(int argc, char** argv) {
  const bool expectInexact = argc == 3 && std::strcmp(argv[2], "--expect-inexact") == 0;
  if (argc != 2 && !expectInexact) {
    std::fprintf(stderr, "usage: %s REFERENCE [--expect-inexact]\n", argv[0]);
    return 2;
  }
  std::ifstream file(argv[1]);
  if (!file) {
    std::fprintf(stderr, "cannot read %s\n", argv[1]);
    return 2;
  }
  std::unordered_map<std::string, std::string> reference;  // "name\tsample" -> results
  std::set<std::string> recordedNames;
  for (std::string line; std::getline(file, line);) {
    const std::size_t second = line.find('\t', line.find('\t') + 1);
    if (second == std::string::npos) continue;
    reference[line.substr(0, second)] = line.substr(second + 1);
    recordedNames.insert(line.substr(0, line.find('\t')));
  }

  int operations = 0, differing = 0, unrecorded = 0;
  std::string current;
  bool reported = false;
  inline_table::runInlineOperations([&](const char* name, int sample, const std::string& text) {
    if (current != name) {
      current = name;
      reported = false;
      ++operations;
      if (!recordedNames.erase(name)) {
        std::printf("not recorded by the library's build: %s\n", name);
        ++unrecorded;
      }
    }
    const auto found = reference.find(current + '\t' + std::to_string(sample));
    if (found == reference.end() || reported) return;
    const std::vector<std::string> mine = tokens(text), theirs = tokens(found->second);
    for (std::size_t i = 0; i < mine.size() || i < theirs.size(); ++i) {
      const std::string a = i < mine.size() ? mine[i] : "(none)", b = i < theirs.size() ? theirs[i] : "(none)";
      if (!sameValue(a, b)) {
        std::printf("differs: %s, sample %d, value %zu: %s here, %s in the library's build\n", name, sample, i,
                    a.c_str(), b.c_str());
        reported = true;
        ++differing;
        return;
      }
    }
  });
  for (const std::string& name : recordedNames) std::printf("recorded but not in this table: %s\n", name.c_str());

  const unsigned int failing = Lux::Math::zeCheckExactResults();
  std::printf("%d of %d inline operations differ from the library's build (%d samples each)\n", differing, operations,
              inline_table::kSamples);
  std::printf("zeCheckExactResults() = %u", failing);
  for (unsigned int family = 1; family <= failing; family <<= 1)
    if (failing & family) std::printf(" %s", Lux::Math::zeExactFamilyName(family));
  std::printf("\n");

  const bool tableComplete = unrecorded == 0 && recordedNames.empty();
  if (expectInexact) {
    const bool seen = differing > 0 && failing == unsigned(Lux::Math::ZE_MATH_EXACT_FAMILY_ALL);
    std::printf("%s\n", seen ? "the difference is seen, as expected of this build"
                             : "FAIL: this build was expected to differ in every family");
    return seen && tableComplete ? 0 : 1;
  }
  const bool exact = differing == 0 && failing == 0 && tableComplete;
  std::printf("%s\n", exact ? "all inline operations give the library's bits" : "FAIL");
  return exact ? 0 : 1;
}
