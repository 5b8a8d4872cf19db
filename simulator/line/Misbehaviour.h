#pragma once

#include "WireFrame.h"

#include <QList>
#include <QString>

#include <chrono>
#include <optional>

namespace simulator {

/// A fault, and the requests that it affects.
struct Fault {
    enum class Kind {
        Silent,   ///< obeys, but the answer is lost
        Lost,     ///< the request is lost
        Late,     ///< value: milliseconds
        Checksum, ///< one too high
        Station,  ///< the next address
        Noise,    ///< bytes before the frame
        Split,    ///< each byte by itself, value: milliseconds apart
        Short,    ///< value: bytes of the body that are left
        Long,     ///< value: bytes of the body, filled up with 0
        Truncate, ///< value: bytes of the frame that are left
        Echo,     ///< another selector than asked
        Code,     ///< value: another message code than 8
        Refuse,   ///< value: the status that refuses; the request is not obeyed
        End,      ///< another end byte than 0x16
        Vanish,   ///< the line goes; value: milliseconds until it comes back, 0 for good
        Stray,    ///< a byte that belongs to nothing; value: microseconds after the answer
    };

    Kind kind = Kind::Silent;
    int value = 0;
    QByteArray noise;
    int after = 0;                ///< matching requests that go well before
    std::optional<int> times = 1; ///< matching requests that it affects; nothing means all
    std::optional<quint8> code;   ///< only requests with this message code
    std::optional<quint8> area;   ///< only requests with this selector
    QString text;                 ///< the command that gave it
};

/// Reads "NAME [VALUE] [times N | always] [after N] [on REQUEST]". REQUEST is a name such as
/// general or block, or a selector such as 0xDA. Nothing when it is no fault; `reason` tells why.
std::optional<Fault> parsedFault(const QString& text, QString& reason);

/// The help about faults.
QStringList faultHelp();

/// Decides which faults affect a request.
class Misbehaviour {
public:
    void add(const Fault& fault) { m_faults += fault; }
    void clear() { m_faults.clear(); }
    /// The active faults as they were given, with their remaining counts.
    QStringList list() const;
    /// The faults that affect this request. Each call counts as one request.
    QList<Fault> strike(quint8 code, const QByteArray& body);

private:
    QList<Fault> m_faults;
};

/// What faults do to the delivery of an answer.
struct Delivery {
    bool isObeyed = true;
    bool isSent = true;
    std::optional<quint8> refusal;
    int delay = 0;   ///< milliseconds
    int byteGap = 0; ///< milliseconds between single bytes, 0 for none
    std::optional<int> vanishFor;
    std::optional<std::chrono::microseconds> strayAfter;
};
Delivery delivery(const QList<Fault>& faults);

/// The bytes that are sent instead of the good answer.
QByteArray spoiled(const WireFrame& answer, const QList<Fault>& faults);

} // namespace simulator
