#include "Validators.h"

#include "CommonOptions.h"
#include "LineSettings.h"
#include "NetworkAddress.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString reasonOfPort(const QString& port)
{
    if (comNumber(port) || NetworkAddress::of(port))
        return {};
    if (NetworkAddress::isMeantBy(port))
        return NetworkAddress::mistakeIn(port);
    const QString numbers = u"COM1 a COM16"_s;
#ifdef Q_OS_WIN
    return u"\"%1\" no es un puerto: indique %2"_s.arg(port, numbers);
#else
    const QRegularExpression unfit(u"^(COM\\d*)?$"_s, QRegularExpression::CaseInsensitiveOption);
    if (unfit.match(port).hasMatch())
        return u"\"%1\" no es un puerto: indique %2, o un dispositivo como /dev/ttyUSB0"_s.arg(
            port, numbers);
    return {};
#endif
}

QString reasonOfDevice(const QString& device)
{
#ifdef Q_OS_WIN
    const bool isPath = false;
#else
    const bool isPath = device.startsWith(u'/') && !NetworkAddress::isMeantBy(device);
#endif
    return isPath || NetworkAddress::of(device) ? QString() : NetworkAddress::mistakeIn(device);
}

} // namespace

CLI::Validator validators::makeValidator(const std::function<QString(const QString& text)>& reason)
{
    return CLI::Validator(
        [reason](std::string& text) { return reason(QString::fromStdString(text)).toStdString(); },
        "");
}

CLI::Validator validators::number(int lowest, int highest)
{
    const auto check = [lowest, highest](std::string& given) {
        const QString text = QString::fromStdString(given);
        bool isNumber = false;
        const int value = text.toInt(&isNumber);
        if (!isNumber || value < lowest || value > highest)
            return u"\"%1\" no es un número de %2 a %3"_s.arg(text)
                .arg(lowest)
                .arg(highest)
                .toStdString();
        // A number that begins with a zero would be read as an octal one.
        given = std::to_string(value);
        return std::string();
    };
    return CLI::Validator(check, "");
}

CLI::Validator validators::port() { return makeValidator(reasonOfPort); }

CLI::Validator validators::comPort()
{
    return makeValidator([](const QString& text) {
        return comNumber(text) ? QString() : u"\"%1\" no es un número de COM1 a COM16"_s.arg(text);
    });
}

CLI::Validator validators::device() { return makeValidator(reasonOfDevice); }

CLI::Validator validators::line()
{
    return makeValidator([](const QString& text) {
        const LineSettingsResult result = parseLineSettings(completedLine(text, u"9600,N,8,1"_s));
        return result.settings ? QString() : result.reason.chopped(1);
    });
}

CLI::Validator validators::fileName()
{
    return makeValidator([](const QString& text) {
        return text.isEmpty() ? u"falta el nombre del archivo"_s : QString();
    });
}

CLI::Validator validators::telephone()
{
    return makeValidator([](const QString& text) {
        const QRegularExpression digits(u"^\\+?[0-9,*#]+$"_s);
        if (digits.match(text).hasMatch())
            return QString();
        return u"\"%1\" no es un número de teléfono"_s.arg(text);
    });
}
