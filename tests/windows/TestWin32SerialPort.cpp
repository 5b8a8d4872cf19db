#include "MemoryRegistry.h"
#include "PortNames.h"
#include "Win32SerialPort.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 20000;

QByteArray everyByte()
{
    QByteArray bytes;
    for (int value = 0; value < 256; ++value)
        bytes.append(static_cast<char>(value));
    return bytes;
}

/// Whether so many bytes arrive in the driver of a port that nobody reads.
bool waitUntilWithDriver(const wchar_t* port, DWORD bytes)
{
    const HANDLE handle =
        CreateFileW(port, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    COMSTAT state{};
    const bool have = QTest::qWaitFor(
        [&] { return ClearCommError(handle, nullptr, &state) && state.cbInQue >= bytes; },
        patience);
    CloseHandle(handle);
    return have;
}

} // namespace

/// The port on real COM ports. COM5 and COM6 are the two ends of one line. COM7 fails like a port
/// that another program has open (wine would open a port twice). COM16 does not exist.
class TestWin32SerialPort : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void everyByteArrivesInBothDirections();
    void longTransfersArriveWhole();
    void thresholdDecidesWhenToTell();
    void readLengthLimitsWhatIsRead();
    void clearedInputIsGone();
    void whatCameBeforeOpeningIsGone();
    void closedPortIsSilentAndOpensAgain();
    void closingFromTheReceiveEventIsSafe();
    void boxInTheReceiveEventLeavesThePortAwake();
    void portClosedUnderABoxInTheReceiveEventOpensAgain();
    void portDeletedInTheReceiveEventIsGone();
    void writingToADeafFarEndReturns();
    void formatsOfTheLine_data();
    void formatsOfTheLine();
    void formatsThatTheDriverReplacesFailToOpen_data();
    void formatsThatTheDriverReplacesFailToOpen();
    void senselessSettingsFailToOpen_data();
    void senselessSettingsFailToOpen();
    void absentPortTellsWhy();
    void portInUseTellsWhy();
    void portBeyondTheListHasNoDevice();
    void settingsChangeBetweenOpenings();
    void destructionClosesThePort();

private:
    std::unique_ptr<Win32SerialPort> makePort(int number)
    {
        auto port = std::make_unique<Win32SerialPort>(m_names);
        port->setPortNumber(number);
        port->setReceiveThreshold(1);
        return port;
    }
    /// Waits until this much is in the input buffer and takes it.
    static QByteArray receive(SerialPort& port, qsizetype count)
    {
        (void)QTest::qWaitFor([&] { return port.inputCount() >= count; }, patience);
        return port.read();
    }

    MemoryRegistry m_registry;
    PortNames m_names{m_registry};
    std::unique_ptr<Win32SerialPort> m_near;
    std::unique_ptr<Win32SerialPort> m_far;
};

void TestWin32SerialPort::init()
{
    m_near = makePort(5);
    m_far = makePort(6);
    m_near->open();
    m_far->open();
    QVERIFY2(m_near->isOpen(), qPrintable(m_near->openError()));
    QVERIFY2(m_far->isOpen(), qPrintable(m_far->openError()));
}

void TestWin32SerialPort::cleanup()
{
    m_near.reset();
    m_far.reset();
}

void TestWin32SerialPort::everyByteArrivesInBothDirections()
{
    QCOMPARE(m_near->deviceName(), u"COM5"_s);
    m_near->write(everyByte());
    QCOMPARE(receive(*m_far, 256), everyByte());
    m_far->write(everyByte());
    QCOMPARE(receive(*m_near, 256), everyByte());
}

void TestWin32SerialPort::longTransfersArriveWhole()
{
    QByteArray sent;
    for (int block = 0; block < 16; ++block) {
        const QByteArray bytes = everyByte().repeated(4);
        m_near->write(bytes);
        sent += bytes;
        (void)QTest::qWaitFor([&] { return m_far->inputCount() >= sent.size(); }, patience);
    }
    QVERIFY(receive(*m_far, sent.size()) == sent);
}

void TestWin32SerialPort::thresholdDecidesWhenToTell()
{
    m_near->setReceiveThreshold(3);
    const QSignalSpy told(m_near.get(), &SerialPort::received);
    m_far->write("ab");
    QVERIFY(QTest::qWaitFor([this] { return m_near->inputCount() == 2; }, patience));
    QCOMPARE(told.count(), 0);
    m_far->write("c");
    QTRY_VERIFY_WITH_TIMEOUT(told.count() >= 1, patience);
    QCOMPARE(m_near->read(), QByteArray("abc"));
    m_near->setReceiveThreshold(0);
    const auto before = told.count();
    m_far->write("d");
    QVERIFY(QTest::qWaitFor([this] { return m_near->inputCount() == 1; }, patience));
    QCOMPARE(told.count(), before);
}

void TestWin32SerialPort::readLengthLimitsWhatIsRead()
{
    m_near->setReadLength(2);
    m_far->write("abc");
    QVERIFY(QTest::qWaitFor([this] { return m_near->inputCount() == 3; }, patience));
    QCOMPARE(m_near->read(), QByteArray("ab"));
    QCOMPARE(m_near->read(), QByteArray("c"));
    QCOMPARE(m_near->read(), QByteArray());
}

void TestWin32SerialPort::clearedInputIsGone()
{
    m_far->write("old");
    QVERIFY(QTest::qWaitFor([this] { return m_near->inputCount() == 3; }, patience));
    m_near->clearInput();
    m_near->clearOutput();
    QCOMPARE(m_near->inputCount(), 0);
    m_far->write("new");
    QCOMPARE(receive(*m_near, 3), QByteArray("new"));
}

void TestWin32SerialPort::whatCameBeforeOpeningIsGone()
{
    m_near->close();
    m_far->write("while nobody listened");
    QVERIFY(waitUntilWithDriver(L"\\\\.\\COM5", 21));
    m_near->open();
    m_far->write("now");
    QCOMPARE(receive(*m_near, 3), QByteArray("now"));
}

void TestWin32SerialPort::closedPortIsSilentAndOpensAgain()
{
    const QSignalSpy told(m_near.get(), &SerialPort::received);
    m_near->close();
    QVERIFY(!m_near->isOpen());
    m_near->write("nothing");
    m_near->open();
    QVERIFY(m_near->isOpen());
    m_near->write("something");
    QCOMPARE(receive(*m_far, 9), QByteArray("something"));
    QCOMPARE(told.count(), 0);
}

void TestWin32SerialPort::closingFromTheReceiveEventIsSafe()
{
    connect(m_near.get(), &SerialPort::received, m_near.get(), [this] { m_near->close(); });
    m_far->write("x");
    QTRY_VERIFY_WITH_TIMEOUT(!m_near->isOpen(), patience);
    m_near->open();
    QVERIFY(m_near->isOpen());
    m_far->write("y");
    QTRY_VERIFY_WITH_TIMEOUT(!m_near->isOpen(), patience);
}

void TestWin32SerialPort::boxInTheReceiveEventLeavesThePortAwake()
{
    QByteArray seenUnderTheBox;
    connect(m_near.get(), &SerialPort::received, m_near.get(), [&] {
        m_near->disconnect();
        QCOMPARE(m_near->read(), QByteArray("question"));
        m_far->write("answer");
        seenUnderTheBox = receive(*m_near, 6);
    });
    m_near->setReceiveThreshold(8);
    m_far->write("question");
    QTRY_COMPARE_WITH_TIMEOUT(seenUnderTheBox, QByteArray("answer"), patience);
}

void TestWin32SerialPort::portClosedUnderABoxInTheReceiveEventOpensAgain()
{
    bool isBoxOver = false;
    connect(m_near.get(), &SerialPort::received, m_near.get(), [&] {
        m_near->disconnect();
        QTimer::singleShot(0, m_near.get(), [this] { m_near->close(); });
        QVERIFY(QTest::qWaitFor([this] { return !m_near->isOpen(); }, patience));
        isBoxOver = true;
    });
    m_far->write("x");
    QTRY_VERIFY_WITH_TIMEOUT(isBoxOver, patience);
    m_near->open();
    m_far->write("y");
    QCOMPARE(receive(*m_near, 1), QByteArray("y"));
}

void TestWin32SerialPort::portDeletedInTheReceiveEventIsGone()
{
    connect(m_near.get(), &SerialPort::received, m_far.get(), [this] { m_near.reset(); });
    m_far->write("x");
    QTRY_VERIFY_WITH_TIMEOUT(!m_near, patience);
}

void TestWin32SerialPort::writingToADeafFarEndReturns()
{
    m_far->close();
    for (int block = 0; block < 40; ++block)
        m_near->write(QByteArray(4096, 'x'));
    QVERIFY(m_near->isOpen());
    m_near->close();
    QVERIFY(!m_near->isOpen());
    // Leaves the line empty for the next test: these bytes arrive last.
    m_far->open();
    m_near->open();
    m_near->write("end");
    QByteArray rest;
    QVERIFY(QTest::qWaitFor([&] { return (rest += m_far->read()).endsWith("end"); }, patience));
}

void TestWin32SerialPort::formatsOfTheLine_data()
{
    QTest::addColumn<QString>("settings");
    for (const char* settings : {"110,N,8,1", "9600,N,8,1", "115200,N,8,1"})
        QTest::newRow(settings) << QString::fromLatin1(settings);
}

void TestWin32SerialPort::formatsOfTheLine()
{
    QFETCH(QString, settings);
    m_near->close();
    m_near->setSettings(settings);
    m_near->open();
    QVERIFY2(m_near->isOpen(), qPrintable(m_near->openError()));
    m_near->write("HCT");
    QCOMPARE(receive(*m_far, 3), QByteArray("HCT"));
}

void TestWin32SerialPort::formatsThatTheDriverReplacesFailToOpen_data()
{
    QTest::addColumn<QString>("settings");
    // The line of a pseudo-terminal has 8 data bits and no parity, whatever is asked of it.
    for (const char* settings : {"9600,E,8,1", "9600,O,8,1", "9600,N,7,1", "9600,M,5,2"})
        QTest::newRow(settings) << QString::fromLatin1(settings);
}

void TestWin32SerialPort::formatsThatTheDriverReplacesFailToOpen()
{
    QFETCH(QString, settings);
    m_near->close();
    m_near->setSettings(settings);
    m_near->open();
    QVERIFY(!m_near->isOpen());
    QCOMPARE(m_near->openError(), u"COM5 no admite estos parámetros (%1)."_s.arg(settings));
}

void TestWin32SerialPort::senselessSettingsFailToOpen_data()
{
    QTest::addColumn<QString>("settings");
    for (const char* settings : {"", "fast,N,8,1", "9600,X,8,1", "9600,N,9,1", "9600,N,8,3"})
        QTest::newRow(settings) << QString::fromLatin1(settings);
}

void TestWin32SerialPort::senselessSettingsFailToOpen()
{
    QFETCH(QString, settings);
    m_near->close();
    m_near->setSettings(settings);
    m_near->open();
    QVERIFY(!m_near->isOpen());
    QVERIFY(!m_near->openError().isEmpty());
}

void TestWin32SerialPort::absentPortTellsWhy()
{
    const auto absent = makePort(16);
    absent->open();
    QVERIFY(!absent->isOpen());
    QCOMPARE(absent->openError(), u"No existe COM16: compruebe que el adaptador está conectado."_s);
}

void TestWin32SerialPort::portInUseTellsWhy()
{
    const auto taken = makePort(7);
    taken->open();
    QVERIFY(!taken->isOpen());
    QCOMPARE(taken->openError(), u"COM7 está en uso por otro programa."_s);
}

void TestWin32SerialPort::portBeyondTheListHasNoDevice()
{
    for (const int number : {-1, 0, 17}) {
        const auto port = makePort(number);
        port->open();
        QVERIFY(!port->isOpen());
        QVERIFY(!port->openError().isEmpty());
    }
}

void TestWin32SerialPort::settingsChangeBetweenOpenings()
{
    m_near->close();
    m_near->setPortNumber(16);
    m_near->open();
    QVERIFY(!m_near->isOpen());
    m_near->setPortNumber(5);
    m_near->open();
    QVERIFY(m_near->isOpen());
    QCOMPARE(m_near->openError(), QString());
}

void TestWin32SerialPort::destructionClosesThePort()
{
    m_near.reset();
    m_near = makePort(5);
    m_near->open();
    m_near->write("again");
    QCOMPARE(receive(*m_far, 5), QByteArray("again"));
}

QTEST_GUILESS_MAIN(TestWin32SerialPort)
#include "TestWin32SerialPort.moc"
