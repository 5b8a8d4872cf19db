#pragma once

#include "ComPortClient.h"
#include "SerialPort.h"

#include <QDeadlineTimer>
#include <QHostAddress>

#include <functional>
#include <optional>

class QEventLoop;
class QHostInfo;
class QTcpSocket;
struct NetworkAddress;

/// A serial port at the far end of a network; see NetworkAddress. Line settings, DTR and RTS reach
/// it only by RFC 2217.
///
/// `open` waits for the far end, longestOpening at most. Meanwhile events run: windows are painted
/// and can be closed, but other input of the operator is lost; see InputFilter. `close` and the end
/// of the event loop end the wait. The addresses of a name are tried one after the other.
///
/// A far end that is gone is noticed within 30 s.
class NetworkSerialPort final : public SerialPort {
    Q_OBJECT
public:
    using AddressReceiver = std::function<void(const QHostInfo& host)>;
    /// Looks up the addresses of a name, and tells them in the event loop unless `context` is gone.
    using LookUp =
        std::function<void(const QString& name, QObject* context, const AddressReceiver& found)>;

    explicit NetworkSerialPort(const QString& device, LookUp lookUp = lookUpByTheSystem,
                               QObject* parent = nullptr);
    ~NetworkSerialPort() override;

    bool isOpen() const override { return m_step == Step::Open; }
    QString deviceName() const override { return m_device; }
    std::chrono::milliseconds answerAllowance() const override;
    /// Bytes that are on the way from the far end arrive nevertheless: when they have left it
    /// nobody knows. The same holds for those on the way to it.
    void clearInput() override;
    void clearOutput() override;
    /// Bytes for which there is no room in outputCapacity are dropped, as if the line were dead.
    void write(const QByteArray& bytes) override;

    static constexpr std::chrono::seconds longestOpening{5};
    /// How long a far end that has accepted the connection may say nothing of RFC 2217.
    static constexpr std::chrono::seconds longestNegotiation{3};
    /// How many bytes may wait to be sent.
    static constexpr qsizetype outputCapacity = 65536;

protected:
    QString openDevice() override;
    void closeDevice() override;
    void applyLines() override;
    void abandonOpening() override;

private:
    static void lookUpByTheSystem(const QString& name, QObject* context,
                                  const AddressReceiver& found);

    enum class Step { Closed, Connecting, Negotiating, Open };

    void reach(const NetworkAddress& address);
    void findAddresses(const NetworkAddress& address);
    void tryAddresses(const QList<QHostAddress>& addresses);
    /// Each gets its share of the time that is left.
    void tryNextAddress();
    void addressFailed(const QString& reason);
    bool isUndecided() const { return m_step == Step::Connecting || m_step == Step::Negotiating; }
    void waitUntilDecided();
    /// Ends the wait of `open`.
    void decide(Step step);
    void failOpening(const QString& reason);
    void connected();
    void socketFailed();
    void openingTimedOut();
    void negotiationTimedOut();
    void negotiate();
    void bytesArrived();
    void readLater();
    void readArrived();
    /// Takes some of what has arrived: the data is appended to `data`, commands are carried out.
    /// False when nothing has arrived.
    bool take(QByteArray& data);
    void forgetLastBytes();
    void loseLater();
    void lose();
    void send(const QByteArray& bytes);
    void sendWaiting();
    void dropSocket();

    const QString m_device;
    const LookUp m_lookUp;
    /// Those of the far end that have not been tried yet, and its port.
    QList<QHostAddress> m_addresses;
    quint16 m_networkPort = 0;
    /// What to tell of the addresses that have been tried.
    QString m_addressFailure;
    QDeadlineTimer m_deadline;
    QTcpSocket* m_socket = nullptr;
    /// Nothing for a raw connection.
    std::optional<ComPortClient> m_client;
    Step m_step = Step::Closed;
    /// While `open` waits.
    QEventLoop* m_wait = nullptr;
    QString m_openFailure;
    /// Data for the time when the far end takes some again.
    QByteArray m_waiting;
    bool m_isArrivalTold = false;
    /// Something was taken before its turn, of which `m_lastBytes` is the data.
    bool m_hasLastBytes = false;
    QByteArray m_lastBytes;
    /// The connection is at its end, which has not been told yet.
    bool m_isBroken = false;
};
