// Records the bits of every operation of the inline-operation table as the
// library's own build computes them: one line per operation and sample,
// "name<TAB>sample<TAB>results", into the file named by the argument. The
// outside builds (tests/consumer/InlineCheck.cpp) compare with it.

#include <cstdio>
#include <string>

#include "consumer/InlineOperations.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s OUTPUT\n", argv[0]);
    return 2;
  }
  std::FILE* out = std::fopen(argv[1], "w");
  if (!out) {
    std::perror(argv[1]);
    return 1;
  }
  inline_table::runInlineOperations([out](const char* name, int sample, const std::string& text) {
    std::fprintf(out, "%s\t%d\t%s\n", name, sample, text.c_str());
  });
  return std::fclose(out) == 0 ? 0 : 1;
}
