#include "modUtilidades.h"

#include "StatusBlock.h"
#include "modRexistro.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

QString nameAt(std::span<const QStringView> names, quint8 number)
{
    return number >= 1 && number <= names.size() ? names[number - 1U].toString() : u"-------"_s;
}

/// The path of the system-information program in the registry; empty when there is none or the file
/// does not exist.
QString systemInformationProgram(const Registry& registry)
{
    // The path ends at the first NUL of the value.
    constexpr bool trim = true;
    constexpr auto root = Registry::RootKey::LocalMachine;
    QString program;
    if (modRexistro::readReadOnlyValue(registry, root,
                                       u"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"_s, u"PATH"_s,
                                       program, trim) &&
        QFileInfo(program).isFile())
        return program;
    if (!modRexistro::readReadOnlyValue(registry, root,
                                        u"SOFTWARE\\Microsoft\\Shared Tools Location"_s,
                                        u"MSINFO"_s, program, trim))
        return QString();
    program += u"\\MSINFO32.EXE"_s;
    return QFileInfo(program).isFile() ? program : QString();
}

} // namespace

QString modUtilidades::dayName(quint8 day)
{
    static constexpr std::array<QStringView, 7> names = {
        u"lunes", u"martes", u"miércoles", u"jueves", u"viernes", u"sábado", u"domingo"};
    return nameAt(names, day);
}

QString modUtilidades::monthName(quint8 month)
{
    static constexpr std::array<QStringView, 12> names = {
        u"enero", u"febrero", u"marzo",      u"abril",   u"mayo",      u"junio",
        u"julio", u"agosto",  u"septiembre", u"octubre", u"noviembre", u"diciembre"};
    return nameAt(names, month);
}

QString modUtilidades::modelName(qint16 typeCode, const QByteArray& generalData)
{
    if (typeCode != StatusBlock::familyType)
        return u"Desconocido"_s;
    return StatusBlock(generalData).model() == ClockModel::Hct7200 ? u"HCT7200"_s : u"HCT7300"_s;
}

qint16 modUtilidades::fullYear(quint8 year)
{
    return static_cast<qint16>(year < 90 ? year + 2000 : year + 1900);
}

QString modUtilidades::hexadecimalText(qint32 value, int width)
{
    const QString digits = QString::number(static_cast<quint32>(value), 16).toUpper();
    return digits.rightJustified(width, u'0').right(std::max(0, width));
}

QString modUtilidades::fileName(const QString& path, bool stripExtension)
{
    QString name = path.sliced(path.lastIndexOf(u'\\') + 1);
    if (stripExtension) {
        for (qsizetype length = 3; length >= 1; --length) {
            const qsizetype dot = name.size() - length - 1;
            if (dot >= 0 && name[dot] == u'.')
                return name.first(dot);
        }
    }
    return name;
}

bool modUtilidades::systemInformation(const Registry& registry,
                                      const std::function<bool(const QString& program)>& start)
{
    const QString program = systemInformationProgram(registry);
    return !program.isEmpty() && start(program);
}
