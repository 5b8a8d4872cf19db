#include "Misbehaviour.h"
#include "Numbers.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace simulator {

namespace {

struct FaultName {
    QLatin1StringView name;
    Fault::Kind kind;
    int value; ///< when none is given
    int minimum;
    int maximum;
    QLatin1StringView help;
};

constexpr int tenSeconds = 10'000'000;
constexpr FaultName faultNames[] = {
    {"silent"_L1, Fault::Kind::Silent, 0, 0, 0, "obeys, but no answer arrives"_L1},
    {"lost"_L1, Fault::Kind::Lost, 0, 0, 0, "the request is lost: not obeyed, not answered"_L1},
    {"late"_L1, Fault::Kind::Late, 1000, 0, anHour, "MS: answers that much later"_L1},
    {"checksum"_L1, Fault::Kind::Checksum, 0, 0, 0, "wrong checksum"_L1},
    {"station"_L1, Fault::Kind::Station, 0, 0, 0, "the answer of another station"_L1},
    {"noise"_L1, Fault::Kind::Noise, 0, 0, 0, "[HEX]: those bytes before the frame"_L1},
    {"split"_L1, Fault::Kind::Split, 2, 1, 1000, "[MS]: single bytes that far apart"_L1},
    {"short"_L1, Fault::Kind::Short, 1, 0, 509, "[BYTES]: only the body's first bytes"_L1},
    {"long"_L1, Fault::Kind::Long, 509, 0, 509, "[BYTES]: the body filled up with 0"_L1},
    {"truncate"_L1, Fault::Kind::Truncate, 6, 0, 517, "[BYTES]: the frame breaks off"_L1},
    {"echo"_L1, Fault::Kind::Echo, 0, 0, 0, "another selector than asked"_L1},
    {"code"_L1, Fault::Kind::Code, 9, 0, 255, "[CODE]: another message code than 8"_L1},
    {"refuse"_L1, Fault::Kind::Refuse, 2, 0, 255, "[STATUS]: refuses and does not obey"_L1},
    {"end"_L1, Fault::Kind::End, 0, 0, 0, "end byte 0x17"_L1},
    {"vanish"_L1, Fault::Kind::Vanish, 0, 0, anHour, "[MS]: the line vanishes, 0 for good"_L1},
    {"stray"_L1, Fault::Kind::Stray, 10'000, -tenSeconds, tenSeconds,
     "[MICROSECONDS]: a lone byte that long after the answer, below 0 before it"_L1},
    {"length"_L1, Fault::Kind::Length, 1, -255, 255, "[N]: L in the header is N too high"_L1},
    {"doubled"_L1, Fault::Kind::Doubled, 0, 0, 0, "the frame twice without a gap"_L1},
    {"joined"_L1, Fault::Kind::Joined, 0, 0, 0,
     "[HEX]: directly followed by a good frame with that body"_L1},
    {"changed"_L1, Fault::Kind::Changed, 0, 0, 516,
     "[PLACE [xor|set BYTE]]: one byte of the frame (xor 0xFF)"_L1},
    {"unplug"_L1, Fault::Kind::Unplug, 6, 0, 4096,
     "[BYTES [MS]]: as vanish, after those bytes of the answer"_L1},
};

struct RequestName {
    QLatin1StringView name;
    quint8 code;
    quint8 area;
};

constexpr RequestName requestNames[] = {
    {"identification"_L1, 1, 0x02}, {"general"_L1, 137, 0x00}, {"mode"_L1, 137, 0xCA},
    {"days-read"_L1, 137, 0xD9},    {"clock"_L1, 105, 0x01},   {"outputs"_L1, 105, 0xCB},
    {"days"_L1, 105, 0xD2},         {"block"_L1, 105, 0xDA},   {"firmware"_L1, 105, 0xDD},
};

/// Bytes that look like the beginnings of frames.
QByteArray usualNoise() { return QByteArray::fromHex("00ff68686804480116680101686848"); }

/// The body of the answer to a good identification.
QByteArray acceptance() { return QByteArray::fromHex("0200"); }

const FaultName* faultNamed(const QString& name)
{
    for (const FaultName& known : faultNames) {
        if (known.name == name)
            return &known;
    }
    return nullptr;
}

bool readRequest(const QString& name, Fault& fault)
{
    for (const RequestName& known : requestNames) {
        if (known.name == name) {
            fault.code = known.code;
            fault.area = known.area;
            return true;
        }
    }
    const std::optional<int> area = numberIn(name, 0, 255);
    if (area)
        fault.area = quint8(*area);
    return area.has_value();
}

bool beginsPerMille(const QStringList& words)
{
    return words.mid(1, 2) == QStringList{u"per"_s, u"mille"_s};
}

bool beginsClause(const QStringList& words)
{
    static const QStringList clauses{u"times"_s, u"always"_s, u"after"_s, u"on"_s};
    return words.isEmpty() || clauses.contains(words.first()) || beginsPerMille(words);
}

bool readBytes(const QString& text, Fault& fault)
{
    constexpr qsizetype maximumSize = 4096;
    fault.bytes = QByteArray::fromHex(text.toLatin1());
    return !fault.bytes.isEmpty() && fault.bytes.size() <= maximumSize &&
           fault.bytes.toHex() == text.toLatin1().toLower();
}

/// Reads what may come after the first value: what happens to a byte, or how long the line is gone.
bool readSecondValue(QStringList& words, Fault& fault)
{
    if (beginsClause(words))
        return true;
    const QString word = words.takeFirst();
    if (fault.kind == Fault::Kind::Unplug) {
        const std::optional<int> absence = numberIn(word, 0, anHour);
        fault.absence = absence.value_or(0);
        return absence.has_value();
    }
    if (fault.kind != Fault::Kind::Changed || words.isEmpty())
        return false;
    const std::optional<int> change = numberIn(words.takeFirst(), 0, 255);
    fault.change = quint8(change.value_or(0));
    fault.isSet = word == "set"_L1;
    return change && (fault.isSet || word == "xor"_L1);
}

/// Reads the values after the name, if there are any. The caller reads the rest.
bool readValues(QStringList& words, const FaultName& name, Fault& fault)
{
    fault.value = name.value;
    if (name.kind == Fault::Kind::Noise)
        fault.bytes = usualNoise();
    else if (name.kind == Fault::Kind::Joined)
        fault.bytes = acceptance();
    if (beginsClause(words))
        return true;
    const QString word = words.takeFirst();
    if (!fault.bytes.isEmpty())
        return readBytes(word, fault);
    const std::optional<int> value = numberIn(word, name.minimum, name.maximum);
    if (name.maximum == 0 || !value)
        return false;
    fault.value = *value;
    return readSecondValue(words, fault);
}

bool readClause(QStringList& words, Fault& fault)
{
    constexpr int maximumCount = 1'000'000;
    if (beginsPerMille(words)) {
        fault.perMille = numberIn(words.takeFirst(), 0, 1000);
        words = words.mid(2);
        fault.times.reset();
        return fault.perMille.has_value();
    }
    const QString clause = words.takeFirst();
    if (clause == "always"_L1) {
        fault.times.reset();
        return true;
    }
    if (words.isEmpty())
        return false;
    const QString word = words.takeFirst();
    if (clause == "on"_L1)
        return readRequest(word, fault);
    const std::optional<int> count = numberIn(word, 0, maximumCount);
    if (clause == "times"_L1 && count && *count > 0)
        fault.times = count;
    else if (clause == "after"_L1 && count)
        fault.after = *count;
    else
        return false;
    return true;
}

} // namespace

std::optional<Fault> parsedFault(const QString& text, QString& reason)
{
    QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    const FaultName* name = words.isEmpty() ? nullptr : faultNamed(words.takeFirst());
    if (!name) {
        reason = u"no fault is called so: %1"_s.arg(text);
        return std::nullopt;
    }
    Fault fault;
    fault.kind = name->kind;
    fault.text = text.simplified();
    bool good = readValues(words, *name, fault);
    while (good && !words.isEmpty())
        good = readClause(words, fault);
    if (good)
        return fault;
    reason = u"cannot read the fault: %1"_s.arg(text);
    return std::nullopt;
}

QStringList faultHelp()
{
    QStringList lines{
        u"FAULT is NAME [VALUE] [N per mille] [times N | always] [after N] [on REQUEST], "
        "once unless told otherwise. NAME is one of:"_s};
    for (const FaultName& known : faultNames)
        lines += u"  %1 %2"_s.arg(known.name, -10).arg(known.help);
    QStringList names;
    for (const RequestName& known : requestNames)
        names += known.name;
    lines += u"REQUEST is a selector such as 0xDA or one of: %1"_s.arg(names.join(u", "_s));
    return lines;
}

} // namespace simulator
