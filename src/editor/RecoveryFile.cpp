#include "RecoveryFile.h"

#include "ProgrammeLayout.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace RecoveryFile {

namespace {

constexpr int format = 1;
constexpr int lastByte = 255;
constexpr int lastFlags = (1 << dayFlagCount) - 1;

int flagsOf(const Alarm& alarm)
{
    int flags = 0;
    for (int day = 0; day < dayFlagCount; ++day)
        flags |= alarm.flags[static_cast<std::size_t>(day)] ? 1 << day : 0;
    return flags;
}

QJsonArray arrayOf(const Programme& programme)
{
    QJsonArray numbers;
    for (const AlarmBlock& block : programme.blocks) {
        numbers.append(block.Duration);
        numbers.append(block.Mode);
        numbers.append(block.ActiveCountPlusOne);
        for (const Alarm& alarm : block.Alarms)
            for (const int number : {int{alarm.Hour}, int{alarm.Minute}, flagsOf(alarm)})
                numbers.append(number);
    }
    for (const Holiday& holiday : programme.table.holidays)
        for (const quint8 number : {holiday.Day, holiday.Month})
            numbers.append(number);
    for (const VacationPeriod& period : programme.table.vacations)
        for (const quint8 number :
             {period.StartDay, period.StartMonth, period.EndDay, period.EndMonth})
            numbers.append(number);
    return numbers;
}

/// Takes numbers from an array, one after the other.
class Numbers {
public:
    explicit Numbers(const QJsonArray& array) : m_array(array) {}

    int take(int last)
    {
        const int number = m_array.at(m_index++).toInt(-1);
        m_isGood = m_isGood && number >= 0 && number <= last;
        return m_isGood ? number : 0;
    }
    void take(quint8& value, int last) { value = static_cast<quint8>(take(last)); }
    bool isGood() const { return m_isGood && m_index == m_array.size(); }

private:
    const QJsonArray m_array;
    qsizetype m_index = 0;
    bool m_isGood = true;
};

void takeBlock(Numbers& numbers, AlarmBlock& block)
{
    for (quint8* number : {&block.Duration, &block.Mode, &block.ActiveCountPlusOne})
        numbers.take(*number, lastByte);
    for (Alarm& alarm : block.Alarms) {
        numbers.take(alarm.Hour, ProgrammeLayout::lastHour);
        numbers.take(alarm.Minute, ProgrammeLayout::lastMinute);
        const int flags = numbers.take(lastFlags);
        for (int day = 0; day < dayFlagCount; ++day)
            alarm.flags[static_cast<std::size_t>(day)] = ((flags >> day) & 1) != 0;
    }
}

std::optional<Programme> programmeOf(const QJsonArray& array)
{
    Numbers numbers(array);
    Programme programme;
    for (AlarmBlock& block : programme.blocks)
        takeBlock(numbers, block);
    for (Holiday& holiday : programme.table.holidays) {
        numbers.take(holiday.Day, ProgrammeLayout::lastDay);
        numbers.take(holiday.Month, ProgrammeLayout::lastMonth);
    }
    for (VacationPeriod& period : programme.table.vacations) {
        numbers.take(period.StartDay, ProgrammeLayout::lastDay);
        numbers.take(period.StartMonth, ProgrammeLayout::lastMonth);
        numbers.take(period.EndDay, ProgrammeLayout::lastDay);
        numbers.take(period.EndMonth, ProgrammeLayout::lastMonth);
    }
    return numbers.isGood() ? std::optional(programme) : std::nullopt;
}

} // namespace

QByteArray text(const UnsavedWork& work)
{
    const QJsonObject object{
        {u"format"_s, format},
        {u"model"_s, work.model == ClockModel::Hct7200 ? 7200 : 7300},
        {u"path"_s, work.path},
        {u"fileHash"_s, QString::fromLatin1(work.fileHash.toHex())},
        {u"misread"_s, work.isMisread},
        {u"programme"_s, arrayOf(work.programme)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<UnsavedWork> read(const QByteArray& text)
{
    const QJsonObject object = QJsonDocument::fromJson(text).object();
    const auto programme = programmeOf(object[u"programme"].toArray());
    const int model = object[u"model"].toInt();
    if (!programme || object[u"format"].toInt() != format || (model != 7200 && model != 7300))
        return std::nullopt;
    return UnsavedWork{*programme, model == 7200 ? ClockModel::Hct7200 : ClockModel::Hct7300,
                       object[u"path"].toString(),
                       QByteArray::fromHex(object[u"fileHash"].toString().toLatin1()),
                       object[u"misread"].toBool()};
}

} // namespace RecoveryFile
