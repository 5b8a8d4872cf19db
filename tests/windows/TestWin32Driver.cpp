#include "MemoryRegistry.h"
#include "PortNames.h"
#include "Win32SerialPort.h"

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <numeric>
#include <vector>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30000;

/// What the driver does otherwise than that of COM5.
struct Driver {
    /// The speed that it takes instead; 0 for the one that it is told.
    DWORD speed = 0;
    /// It accepts writes and ends none, not even when they are cancelled.
    bool hangs = false;
    /// How many calls that would end with bytes end without any, as those whose bytes were cleared.
    int brokenCalls = 0;
    /// The bytes of the writes that it has not ended.
    std::vector<QByteArrayView> kept;
    /// In milliseconds, each wait that it was asked for.
    std::vector<DWORD> waits;
};
Driver driver;

template<typename Function>
Function systemFunction(const char* name)
{
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

BOOL WINAPI getCommState(HANDLE port, DCB* state)
{
    static const auto system = systemFunction<decltype(&getCommState)>("GetCommState");
    const BOOL done = system(port, state);
    if (driver.speed > 0)
        state->BaudRate = driver.speed;
    return done;
}

BOOL WINAPI writeFile(HANDLE file, const void* bytes, DWORD count, DWORD* written,
                      OVERLAPPED* overlapped)
{
    static const auto system = systemFunction<decltype(&writeFile)>("WriteFile");
    if (!driver.hangs || !overlapped)
        return system(file, bytes, count, written, overlapped);
    driver.kept.emplace_back(static_cast<const char*>(bytes), static_cast<qsizetype>(count));
    SetLastError(ERROR_IO_PENDING);
    return FALSE;
}

BOOL WINAPI getOverlappedResult(HANDLE file, OVERLAPPED* overlapped, DWORD* count, BOOL waits)
{
    static const auto system =
        systemFunction<decltype(&getOverlappedResult)>("GetOverlappedResult");
    const BOOL done = system(file, overlapped, count, waits);
    if (!done || driver.brokenCalls == 0)
        return done;
    --driver.brokenCalls;
    *count = 0;
    SetLastError(ERROR_BROKEN_PIPE);
    return FALSE;
}

DWORD WINAPI waitForSingleObject(HANDLE object, DWORD milliseconds)
{
    static const auto system =
        systemFunction<decltype(&waitForSingleObject)>("WaitForSingleObject");
    const DWORD result = system(object, milliseconds);
    if (result == WAIT_TIMEOUT)
        driver.waits.push_back(milliseconds);
    return result;
}

} // namespace

// In the place of the functions that the program imports.
extern "C" {
extern decltype(&getCommState) const __imp_GetCommState;
extern decltype(&writeFile) const __imp_WriteFile;
extern decltype(&getOverlappedResult) const __imp_GetOverlappedResult;
extern decltype(&waitForSingleObject) const __imp_WaitForSingleObject;
decltype(&getCommState) const __imp_GetCommState = &getCommState;
decltype(&writeFile) const __imp_WriteFile = &writeFile;
decltype(&getOverlappedResult) const __imp_GetOverlappedResult = &getOverlappedResult;
decltype(&waitForSingleObject) const __imp_WaitForSingleObject = &waitForSingleObject;
}

/// The port with drivers that misbehave. The port is COM5.
class TestWin32Driver : public QObject {
    Q_OBJECT
private slots:
    void init();
    void speedThatTheDriverTookIsChecked_data();
    void speedThatTheDriverTookIsChecked();
    void closingWaitsOnceForAllWrites();
    void writesThatDoNotEndAreOverwritten();
    void readThatEndsWithoutItsByteDoesNotLoseThePort();
    void portWhoseReadsAllEndWithoutAByteIsLost();

private:
    MemoryRegistry m_registry;
    PortNames m_names{m_registry};
    std::unique_ptr<Win32SerialPort> m_port;
    /// The other end of its line.
    std::unique_ptr<Win32SerialPort> m_far;
};

void TestWin32Driver::init()
{
    driver = Driver();
    m_port = std::make_unique<Win32SerialPort>(m_names);
    m_port->setPortNumber(5);
    m_far = std::make_unique<Win32SerialPort>(m_names);
    m_far->setPortNumber(6);
    m_far->open();
    QVERIFY2(m_far->isOpen(), qPrintable(m_far->openError()));
}

void TestWin32Driver::speedThatTheDriverTookIsChecked_data()
{
    QTest::addColumn<unsigned long>("taken");
    QTest::addColumn<QString>("refusal");
    const QString refused = u"COM5 no admite la velocidad de 9600 bit/s."_s;
    QTest::newRow("as told") << 9600UL << QString();
    QTest::newRow("2.9 % faster") << 9878UL << QString();
    QTest::newRow("2.9 % slower") << 9322UL << QString();
    QTest::newRow("3.1 % faster") << 9898UL << refused;
    QTest::newRow("3.1 % slower") << 9302UL << refused;
    QTest::newRow("another") << 115200UL << refused;
}

void TestWin32Driver::speedThatTheDriverTookIsChecked()
{
    QFETCH(unsigned long, taken);
    driver.speed = taken;
    m_port->open();
    QTEST(m_port->openError(), "refusal");
}

void TestWin32Driver::closingWaitsOnceForAllWrites()
{
    m_port->open();
    QVERIFY2(m_port->isOpen(), qPrintable(m_port->openError()));
    driver.hangs = true;
    for (int write = 0; write < 20; ++write)
        m_port->write("x");
    QCOMPARE(driver.kept.size(), 20U);
    driver.waits.clear();
    m_port->close();
    // One takes 100 ms. The waits after it have no time left.
    const DWORD waited = std::accumulate(driver.waits.begin(), driver.waits.end(), DWORD(0));
    QVERIFY2(waited >= 100 && waited < 200, QByteArray::number(uint(waited)));
}

void TestWin32Driver::writesThatDoNotEndAreOverwritten()
{
    m_port->open();
    QVERIFY2(m_port->isOpen(), qPrintable(m_port->openError()));
    driver.hangs = true;
    m_port->write("AT+CPIN=7391\r\n");
    m_port->write("AT\r\n");
    QCOMPARE(driver.kept.size(), 2U);
    m_port->close();
    // The driver may still use their memory, so it is never freed.
    QCOMPARE(driver.kept[0].toByteArray(), QByteArray(14, '\0'));
    QCOMPARE(driver.kept[1].toByteArray(), QByteArray(4, '\0'));
}

void TestWin32Driver::readThatEndsWithoutItsByteDoesNotLoseThePort()
{
    m_port->open();
    QVERIFY2(m_port->isOpen(), qPrintable(m_port->openError()));
    QSignalSpy lost(m_port.get(), &SerialPort::lost);
    driver.brokenCalls = 1;
    m_far->write("x");
    QTRY_COMPARE_WITH_TIMEOUT(driver.brokenCalls, 0, patience);
    m_far->write("abc");
    QTRY_COMPARE_WITH_TIMEOUT(m_port->inputCount(), 3, patience);
    QCOMPARE(m_port->read(), "abc"_ba);
    QVERIFY(lost.isEmpty());
}

void TestWin32Driver::portWhoseReadsAllEndWithoutAByteIsLost()
{
    m_port->open();
    QVERIFY2(m_port->isOpen(), qPrintable(m_port->openError()));
    QSignalSpy lost(m_port.get(), &SerialPort::lost);
    driver.brokenCalls = 1000;
    QTimer writing;
    connect(&writing, &QTimer::timeout, this, [this] { m_far->write("x"); });
    writing.start(1);
    QTRY_VERIFY_WITH_TIMEOUT(!m_port->isOpen(), patience);
    QCOMPARE(lost.count(), 1);
}

QTEST_GUILESS_MAIN(TestWin32Driver)
#include "TestWin32Driver.moc"
