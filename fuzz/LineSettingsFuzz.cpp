#include "LineSettings.h"

#include <QStringView>

#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

/// Any text of a setting must be refused with a reason, or give values in their ranges.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const LineSettingsResult result = parseLineSettings(text);
    require(result.settings.has_value() == result.reason.isEmpty());
    if (!result.settings)
        return 0;
    require(result.settings->speed > 0);
    require(QStringLiteral("NEOMS").contains(QLatin1Char(result.settings->parity)));
    require(result.settings->dataBits >= 4 && result.settings->dataBits <= 8);
    return 0;
}
