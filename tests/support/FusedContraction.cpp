// Built with -ffp-contract=fast -mfma (tests/CMakeLists.txt): what a program
// compiled by hand without the package's flags gets.

#include <math/zeExactResults.h>

unsigned int exactResultsWithFusedContraction() { return Lux::Math::zeCheckExactResults(); }
