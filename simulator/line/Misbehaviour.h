#pragma once

#include "WireFrame.h"

#include <QList>
#include <QString>

#include <chrono>
#include <optional>
#include <random>

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
        Stray,    ///< a byte that belongs to nothing; value: microseconds after the answer, below 0
                  ///< before it
        Length,   ///< L in the header is too high; value: by how much, below 0 too low
        Doubled,  ///< the frame twice
        Joined,   ///< another good frame directly after it, whose body is `bytes`
        Changed,  ///< one byte of the frame; value: its place, counted from 0
        Unplug,   ///< the line goes in the answer; value: the bytes of it that are sent
    };

    Kind kind = Kind::Silent;
    int value = 0;
    QByteArray bytes;             ///< of Noise and Joined
    quint8 change = 0xFF;         ///< Changed: what the byte is combined with by exclusive or
    bool isSet = false;           ///< Changed: `change` replaces the byte
    int absence = 0;              ///< Unplug: milliseconds until the line comes back, 0 for good
    int after = 0;                ///< matching requests that go well before
    std::optional<int> perMille;  ///< matching requests of a thousand that it may affect, by chance
    std::optional<int> times = 1; ///< matching requests that it affects; nothing means all
    int struck = 0;               ///< requests that it has affected
    std::optional<quint8> code;   ///< only requests with this message code
    std::optional<quint8> area;   ///< only requests with this selector
    QString text;                 ///< the command that gave it
};

/// Reads "NAME [VALUE] [N per mille] [times N | always] [after N] [on REQUEST]". REQUEST is a name
/// such as general or block, or a selector such as 0xDA. Nothing when it is no fault; `reason`
/// tells why.
std::optional<Fault> parsedFault(const QString& text, QString& reason);

/// The help about faults.
QStringList faultHelp();

/// Decides which faults affect a request.
class Misbehaviour {
public:
    void add(const Fault& fault) { m_faults += fault; }
    void clear() { m_faults.clear(); }
    /// Begins the sequence that decides about faults with a chance. The same seed, faults and
    /// requests give the same decisions on every machine.
    void setSeed(quint32 seed) { m_generator.seed(seed); }
    /// The active faults as they were given, with their counts.
    QStringList list() const;
    /// The faults that affect this request. Each call counts as one request.
    QList<Fault> strike(quint8 code, const QByteArray& body);

private:
    bool decides(const Fault& fault);

    QList<Fault> m_faults;
    std::mt19937 m_generator{1};
};

/// What faults do to the delivery of an answer.
struct Delivery {
    bool isObeyed = true;
    bool isSent = true;
    std::optional<quint8> refusal;
    int delay = 0;   ///< milliseconds
    int byteGap = 0; ///< milliseconds between single bytes, 0 for none
    std::optional<int> vanishFor;
    std::optional<int> unplugFor; ///< as vanishFor, when the bytes of `spoiled` have been sent
    std::optional<std::chrono::microseconds> strayAfter; ///< below 0: before the answer
};
Delivery delivery(const QList<Fault>& faults);

/// The bytes that are sent instead of the good answer.
QByteArray spoiled(const WireFrame& answer, const QList<Fault>& faults);

} // namespace simulator
