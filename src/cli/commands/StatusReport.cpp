#include "StatusReport.h"

#include "ClockTime.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// In the order of ClockDisplay's indicators.
constexpr std::array<QStringView, ClockDisplay::statusCount> flagKeys{
    u"winter", u"adjustmentInhibited", u"remoteControl", u"battery", u"generalFault"};
constexpr std::array<QStringView, ClockDisplay::statusCount> flagNames{
    u"Invierno", u"Inhibir ajuste", u"Telemando", u"Batería", u"Fallo general"};
constexpr std::array<QStringView, ClockDisplay::inputCount> inputKeys{u"P1", u"P2", u"sensor"};
constexpr std::array<QStringView, ClockDisplay::inputCount> inputNames{u"P1", u"P2", u"Sensor"};

constexpr int firstTimeByte = 5;
constexpr int lastTimeByte = 11;

/// "Modelo:          HCT-7200".
QString labelled(QStringView label, const QString& text)
{
    constexpr int labelWidth = 17;
    return (label.toString() + u':').leftJustified(labelWidth) + text;
}

/// "entradas activas: P1, Sensor"; "-" for none.
template<std::size_t count, typename IsLit>
QString lit(const QString& label, const std::array<QStringView, count>& names, const IsLit& isLit)
{
    QStringList those;
    for (std::size_t i = 0; i < count; ++i)
        if (isLit(static_cast<int>(i)))
            those += names[i].toString();
    return label + u' ' + (those.isEmpty() ? u"-"_s : those.join(u", "_s));
}

} // namespace

StatusReport::StatusReport(const QByteArray& generalData, const QDateTime& moment)
    : m_block(generalData),
      m_display(m_block),
      m_secondsAhead(clocktime::secondsAhead(m_block, moment))
{}

QJsonObject StatusReport::json() const
{
    QJsonObject object{{u"model"_s, modelText()},
                       {u"deviceType"_s, m_block.deviceType()},
                       {u"outputs"_s, outputs()}};
    if (const auto time = clocktime::ofClock(m_block)) {
        object[u"time"_s] = time->toString(u"yyyy-MM-ddTHH:mm:ss"_s);
        object[u"secondsAhead"_s] = *m_secondsAhead;
    } else {
        object[u"time"_s] = QJsonValue::Null;
        object[u"secondsAhead"_s] = QJsonValue::Null;
        QJsonArray bytes;
        for (int index = firstTimeByte; index <= lastTimeByte; ++index)
            bytes += m_block.byte(index);
        object[u"rawTime"_s] = bytes;
    }
    QJsonObject flags;
    for (std::size_t i = 0; i < flagKeys.size(); ++i)
        flags[flagKeys[i]] = m_display.isStatusLit(static_cast<int>(i));
    object[u"flags"_s] = flags;
    if (hasInputs()) {
        QJsonObject inputs;
        for (std::size_t i = 0; i < inputKeys.size(); ++i)
            inputs[inputKeys[i]] = m_display.isInputActive(static_cast<int>(i));
        object[u"inputs"_s] = inputs;
    }
    return object;
}

QString StatusReport::text() const
{
    QStringList lines{labelled(u"Modelo", modelText()),
                      labelled(u"Fecha", m_display.dateText().trimmed()),
                      labelled(u"Hora", timeText()), labelled(u"Modo", modeText())};
    for (int number = 1; number <= ClockDisplay::outputCount; ++number)
        lines += labelled(u"Avisos %1"_s.arg(number),
                          isOutputOn(number) ? u"encendido"_s : u"apagado"_s);
    if (hasInputs())
        for (std::size_t i = 0; i < inputNames.size(); ++i)
            lines += labelled(inputNames[i], m_display.isInputActive(static_cast<int>(i))
                                                 ? u"activa"_s
                                                 : u"en reposo"_s);
    for (std::size_t i = 0; i < flagNames.size(); ++i)
        lines +=
            labelled(flagNames[i], m_display.isStatusLit(static_cast<int>(i)) ? u"sí"_s : u"no"_s);
    return lines.join(u'\n');
}

QString StatusReport::line() const
{
    QStringList parts{m_display.dateText().trimmed(), timeText(), u"modo "_s + modeText(),
                      outputsText()};
    if (hasInputs())
        parts += lit(u"entradas activas:"_s, inputNames,
                     [this](int i) { return m_display.isInputActive(i); });
    parts += lit(u"indicadores:"_s, flagNames, [this](int i) { return m_display.isStatusLit(i); });
    return parts.join(u"; "_s);
}

bool StatusReport::isOutputOn(int number) const
{
    // The windows show the last output in the row "Avisos 1".
    return m_display.isOutputOn(ClockDisplay::outputCount - number);
}

QJsonArray StatusReport::outputs() const
{
    QJsonArray states;
    for (int number = 1; number <= ClockDisplay::outputCount; ++number)
        states += isOutputOn(number);
    return states;
}

QString StatusReport::modelText() const
{
    return m_block.model() == ClockModel::Hct7200 ? u"HCT-7200"_s : u"HCT-7300"_s;
}

QString StatusReport::modeText() const { return isManual() ? u"manual"_s : u"automático"_s; }

QString StatusReport::timeText() const
{
    const QString shown = m_display.timeText().trimmed();
    return m_secondsAhead ? u"%1 (%2)"_s.arg(shown, clocktime::differenceText(*m_secondsAhead))
                          : shown + u" (esa fecha u hora no existe: ponga el reloj en hora)"_s;
}

QString StatusReport::outputsText() const
{
    QStringList parts;
    for (int number = 1; number <= ClockDisplay::outputCount; ++number)
        parts += u"Avisos %1 %2"_s.arg(QString::number(number),
                                       isOutputOn(number) ? u"encendido"_s : u"apagado"_s);
    return parts.join(u", "_s);
}
