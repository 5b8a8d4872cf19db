#include <cstdlib>

namespace {

int passOn(const char* from, const char* to)
{
    const char* value = std::getenv(from);
    return value ? _putenv_s(to, value) : 0;
}

// wine does not pass QT_QPA_PLATFORM and the like to its programs, so other names are used.
[[maybe_unused]] const int passedOn =
    passOn("HCT_TEST_PLATFORM", "QT_QPA_PLATFORM") + passOn("HCT_TEST_FONTS", "QT_QPA_FONTDIR");

} // namespace
