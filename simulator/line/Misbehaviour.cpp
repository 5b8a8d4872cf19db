#include "Misbehaviour.h"

namespace simulator {

namespace {

bool matches(const Fault& fault, quint8 code, const QByteArray& body)
{
    if (fault.code && *fault.code != code)
        return false;
    return !fault.area || (!body.isEmpty() && quint8(body[0]) == *fault.area);
}

/// The body cut or changed before the frame is made of it.
void spoilContent(WireFrame& frame, const Fault& fault)
{
    switch (fault.kind) {
    case Fault::Kind::Station: frame.station = quint8(frame.station + 1); break;
    case Fault::Kind::Code: frame.code = quint8(fault.value); break;
    case Fault::Kind::Short: frame.data.truncate(fault.value); break;
    case Fault::Kind::Long: frame.data = frame.data.leftJustified(fault.value, '\0'); break;
    case Fault::Kind::Echo:
        if (!frame.data.isEmpty())
            frame.data[0] = char(quint8(frame.data[0]) ^ 0x55);
        break;
    default: break;
    }
}

void spoilWire(QByteArray& wire, const Fault& fault)
{
    const qsizetype checksum = wire.size() - 2;
    switch (fault.kind) {
    case Fault::Kind::Checksum: wire[checksum] = char(quint8(wire[checksum]) + 1); break;
    case Fault::Kind::End: wire[checksum + 1] = '\x17'; break;
    case Fault::Kind::Length: wire[1] = wire[2] = char(quint8(wire[1]) + fault.value); break;
    case Fault::Kind::Changed:
        if (fault.value < wire.size())
            wire[fault.value] =
                char(fault.isSet ? fault.change : quint8(wire[fault.value]) ^ fault.change);
        break;
    default: break;
    }
}

/// Faults of the whole frame, in this order whatever the order in which they were given: it is cut
/// after all other changes, sent twice, followed and preceded by other bytes, and the line goes.
void spoilOutline(QByteArray& wire, const QList<Fault>& faults, const WireFrame& answer)
{
    const auto forEach = [&faults](Fault::Kind kind, const auto& spoil) {
        for (const Fault& fault : faults) {
            if (fault.kind == kind)
                spoil(fault);
        }
    };
    forEach(Fault::Kind::Truncate, [&](const Fault& fault) { wire.truncate(fault.value); });
    forEach(Fault::Kind::Doubled, [&](const Fault&) { wire += QByteArray(wire); });
    forEach(Fault::Kind::Joined, [&](const Fault& fault) {
        wire += encoded({answer.station, answer.code, fault.bytes});
    });
    forEach(Fault::Kind::Noise, [&](const Fault& fault) { wire.prepend(fault.bytes); });
    forEach(Fault::Kind::Unplug, [&](const Fault& fault) { wire.truncate(fault.value); });
}

} // namespace

QStringList Misbehaviour::list() const
{
    QStringList lines;
    for (const Fault& fault : m_faults) {
        const QString left = fault.times ? QString::number(*fault.times) : QStringLiteral("always");
        lines += QStringLiteral("%1 (after %2, left %3, struck %4)")
                     .arg(fault.text)
                     .arg(fault.after)
                     .arg(left)
                     .arg(fault.struck);
    }
    return lines;
}

QList<Fault> Misbehaviour::strike(quint8 code, const QByteArray& body)
{
    QList<Fault> striking;
    for (Fault& fault : m_faults) {
        if (!matches(fault, code, body))
            continue;
        if (fault.after > 0) {
            --fault.after;
            continue;
        }
        if (!decides(fault))
            continue;
        ++fault.struck;
        striking += fault;
        if (fault.times)
            --*fault.times;
    }
    m_faults.removeIf([](const Fault& fault) { return fault.times && *fault.times <= 0; });
    return striking;
}

bool Misbehaviour::decides(const Fault& fault)
{
    if (!fault.perMille)
        return true;
    // The distributions of the standard library differ from one library to another.
    constexpr quint32 thousand = 1000;
    return int((quint64(m_generator()) * thousand) >> 32) < *fault.perMille;
}

Delivery delivery(const QList<Fault>& faults)
{
    Delivery result;
    for (const Fault& fault : faults) {
        switch (fault.kind) {
        case Fault::Kind::Silent: result.isSent = false; break;
        case Fault::Kind::Lost: result.isSent = result.isObeyed = false; break;
        case Fault::Kind::Late: result.delay += fault.value; break;
        case Fault::Kind::Split: result.byteGap = fault.value; break;
        case Fault::Kind::Refuse: result.refusal = quint8(fault.value); break;
        case Fault::Kind::Vanish:
            result.isSent = result.isObeyed = false;
            result.vanishFor = fault.value;
            break;
        case Fault::Kind::Unplug: result.unplugFor = fault.absence; break;
        case Fault::Kind::Stray: result.strayAfter = std::chrono::microseconds(fault.value); break;
        default: break;
        }
    }
    return result;
}

QByteArray spoiled(const WireFrame& answer, const QList<Fault>& faults)
{
    WireFrame frame = answer;
    for (const Fault& fault : faults)
        spoilContent(frame, fault);
    QByteArray wire = encoded(frame);
    for (const Fault& fault : faults)
        spoilWire(wire, fault);
    spoilOutline(wire, faults, answer);
    return wire;
}

} // namespace simulator
