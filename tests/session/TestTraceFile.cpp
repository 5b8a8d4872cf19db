#include "Answer.h"
#include "ConnectionWorkflow.h"
#include "Exchange.h"
#include "Files.h"
#include "LinkTrace.h"
#include "ModemFixture.h"
#include "TraceFile.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

class TestTraceFile : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void oneExchangeIsTracedLineByLine();
    void requestWithoutAnswerIsTraced();
    void answerThatIsNotGoodIsTracedAsEight();
    void refusedGeneralDataIsTracedAsSeven();
    void ofAnAnswerWithAWrongChecksumNoByteIsTraced();
    void portsAreTraced();
    void firstLineNamesProgramAndSystem();
    void timesAreMicrosecondsSinceTheStartOfTheProgram();
    void linesAreInTheFileAtOnce();
    void fileOfAnEarlierRunIsReplaced();
    void lineEndsInSettingsEndNoLine();
    void codesOfTheSimCardStayOut_data();
    void codesOfTheSimCardStayOut();
    void lateEchoOfTheCodesStaysOut_data();
    void lateEchoOfTheCodesStaysOut();
    void otherMessagesGoWhereTheyWent();
    void withoutATraceNothingIsReported();
    void fileThatCannotBeWrittenIsTold_data();
    void fileThatCannotBeWrittenIsTold();

private:
    QString path() const { return m_folder->filePath(u"traza.txt"_s); }
    void trace() { m_trace.emplace(path(), std::chrono::steady_clock::now()); }
    /// All lines but the first, with "*" for their times.
    QStringList lines() const;
    /// Sends a request of code 5; an answer is good when it is for selector 2.
    void request(LinkFixture& fixture);

    std::unique_ptr<QTemporaryDir> m_folder;
    std::optional<TraceFile> m_trace;
    Exchange m_exchange;
};

void TestTraceFile::init() { m_folder = std::make_unique<QTemporaryDir>(); }

void TestTraceFile::cleanup()
{
    m_trace.reset();
    m_folder.reset();
}

QStringList TestTraceFile::lines() const
{
    static const QRegularExpression time(u"^[0-9]+ "_s);
    QStringList lines = QString::fromUtf8(contentsOf(path())).split(u'\n');
    lines.removeFirst();
    for (QString& line : lines)
        line.replace(time, u"* "_s);
    return lines;
}

void TestTraceFile::request(LinkFixture& fixture)
{
    m_exchange.request(fixture.link, 5, QByteArray::fromHex("02"),
                       std::bind_front(isAccepted, quint8(2)),
                       [](quint8, const QByteArray&, LinkStatus) {});
}

void TestTraceFile::oneExchangeIsTracedLineByLine()
{
    LinkFixture fixture;
    trace();
    fixture.link.ArrancaConexion(false);
    request(fixture);
    fixture.serie.arrive(QByteArray::fromHex("ff68040468010802000b16"));
    fixture.link.RemataConexion();
    QCOMPARE(lines(), (QStringList{
                          u"* hct.link opened COM1,9600,N,8,1 /dev/fake"_s,
                          u"* hct.link state 7"_s,
                          u"* hct.link.frames COM1 sent 680303680115021816"_s,
                          u"* hct.link state 8"_s,
                          u"* hct.link.frames COM1 received 68040468010802000b16"_s,
                          u"* hct.link answer: code 8, 2 bytes, status 0"_s,
                          u"* hct.link state 0"_s,
                          u"* hct.link closed COM1,9600,N,8,1"_s,
                          QString(),
                      }));
}

void TestTraceFile::requestWithoutAnswerIsTraced()
{
    LinkFixture fixture;
    fixture.link.ArrancaConexion(false);
    trace();
    request(fixture);
    fixture.serie.arrive(QByteArray::fromHex("680404680108"));
    fixture.timeOut();
    fixture.serie.close();
    request(fixture);
    QCOMPARE(lines(), (QStringList{
                          u"* hct.link state 7"_s,
                          u"* hct.link.frames COM1 sent 680303680115021816"_s,
                          u"* hct.link state 8"_s,
                          u"* hct.link no answer: status 1"_s,
                          u"* hct.link state 0"_s,
                          u"* hct.link port closed: status 11"_s,
                          QString(),
                      }));
}

void TestTraceFile::answerThatIsNotGoodIsTracedAsEight()
{
    LinkFixture fixture;
    fixture.link.ArrancaConexion(false);
    trace();
    request(fixture);
    fixture.serie.arrive(QByteArray::fromHex("68040468010803000c16"));
    QCOMPARE(lines().mid(4), (QStringList{
                                 u"* hct.link answer: code 8, 2 bytes, status 0"_s,
                                 u"* hct.link answer not good: status 8"_s,
                                 u"* hct.link state 0"_s,
                                 QString(),
                             }));
}

void TestTraceFile::refusedGeneralDataIsTracedAsSeven()
{
    LinkFixture fixture;
    ConnectionWorkflow workflow(fixture.crono, fixture.link, fixture.globais, fixture.log);
    fixture.link.ArrancaConexion(false);
    trace();
    workflow.SendGeneralDataRequest();
    fixture.answerHex("0000000b01");
    QCOMPARE(lines().mid(4), (QStringList{
                                 u"* hct.link answer: code 8, 5 bytes, status 0"_s,
                                 u"* hct.link answer not good: status 7"_s,
                                 u"* hct.link state 0"_s,
                                 QString(),
                             }));
}

void TestTraceFile::ofAnAnswerWithAWrongChecksumNoByteIsTraced()
{
    LinkFixture fixture;
    fixture.link.ArrancaConexion(false);
    trace();
    request(fixture);
    fixture.serie.arrive(QByteArray::fromHex("68040468010802000c16"));
    QCOMPARE(lines().mid(2), (QStringList{
                                 u"* hct.link state 8"_s,
                                 u"* hct.link.frames COM1 received L=4, wrong checksum"_s,
                                 u"* hct.link wrong checksum: status 4"_s,
                                 u"* hct.link state 0"_s,
                                 QString(),
                             }));
}

void TestTraceFile::portsAreTraced()
{
    LinkFixture fixture;
    fixture.modem.refusal = u"Permiso denegado"_s;
    trace();
    fixture.link.ArrancaConexion(false);
    fixture.serie.vanish();
    fixture.link.ArrancaConexion(true);
    QCOMPARE(lines(), (QStringList{
                          u"* hct.link opened COM1,9600,N,8,1 /dev/fake"_s,
                          u"* hct.link lost COM1,9600,N,8,1 /dev/fake"_s,
                          u"* hct.link not opened COM1,9600,N,8,1: Permiso denegado"_s,
                          QString(),
                      }));
}

void TestTraceFile::firstLineNamesProgramAndSystem()
{
    QCoreApplication::setApplicationName(u"hct"_s);
    QCoreApplication::setApplicationVersion(u"1.2.3"_s);
    trace();
    static const QRegularExpression line(u"^[0-9]+ hct 1\\.2\\.3, Qt 6\\.[0-9.]+, .+, "
                                         "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\n$"_s);
    const QString contents = QString::fromUtf8(contentsOf(path()));
    QVERIFY2(line.match(contents).hasMatch(), qPrintable(contents));
}

void TestTraceFile::timesAreMicrosecondsSinceTheStartOfTheProgram()
{
    LinkFixture fixture;
    const auto start = std::chrono::steady_clock::now() - std::chrono::hours(1);
    m_trace.emplace(path(), start);
    fixture.link.ArrancaConexion(false);
    const auto end = std::chrono::steady_clock::now() - start;
    const qint64 time = contentsOf(path()).split('\n').at(1).split(' ').constFirst().toLongLong();
    QVERIFY(time >= 3'600'000'000);
    QVERIFY(time <= std::chrono::duration_cast<std::chrono::microseconds>(end).count());
}

void TestTraceFile::linesAreInTheFileAtOnce()
{
    LinkFixture fixture;
    trace();
    fixture.link.ArrancaConexion(false);
    QVERIFY(contentsOf(path()).endsWith("opened COM1,9600,N,8,1 /dev/fake\n"));
}

void TestTraceFile::fileOfAnEarlierRunIsReplaced()
{
    writeFile(path(), QByteArray(1000, '~'));
    trace();
    QVERIFY(m_trace->isOpen());
    QVERIFY(!contentsOf(path()).contains('~'));
}

void TestTraceFile::lineEndsInSettingsEndNoLine()
{
    LinkFixture fixture;
    fixture.settings.directSpeed = u"96\r\n00"_s;
    fixture.link.ApplySettings();
    trace();
    fixture.link.ArrancaConexion(false);
    QCOMPARE(lines(), (QStringList{u"* hct.link opened COM1,96  00,N,8,1 /dev/fake"_s, QString()}));
}

/// In 8-bit text, UTF-16 and hexadecimal of both.
static bool isIn(const QByteArray& contents, const QByteArray& code)
{
    const QString text = QString::fromLatin1(code);
    const QByteArray utf16(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    const QByteArray lower = contents.toLower();
    return contents.contains(code) || contents.contains(utf16) || lower.contains(code.toHex()) ||
           lower.contains(code.toHex(' ')) || lower.contains(utf16.toHex());
}

void TestTraceFile::codesOfTheSimCardStayOut_data()
{
    QTest::addColumn<QByteArray>("pin");
    QTest::addColumn<QByteArray>("puk");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("PIN") << QByteArray("7351") << QByteArray() << QByteArray("OK\r\n");
    QTest::newRow("PUK") << QByteArray("7351") << QByteArray("40962817") << QByteArray("OK\r\n");
    QTest::newRow("refused") << QByteArray("7351") << QByteArray("40962817")
                             << QByteArray("ERROR\r\n");
}

void TestTraceFile::codesOfTheSimCardStayOut()
{
    QFETCH(QByteArray, pin);
    QFETCH(QByteArray, puk);
    QFETCH(QByteArray, reply);
    ModemFixture fixture;
    connect(&fixture.control, &ModemControl::failed, &fixture.control,
            &ModemControl::acknowledgeFailure);
    trace();
    fixture.control.sendPin(pin, puk);
    const QByteArray command = fixture.takeCommand();
    QVERIFY(command.contains(pin) && command.contains(puk));
    fixture.reply(command);
    fixture.reply(reply);
    fixture.control.acknowledgeFailure();
    QCOMPARE(lines(), (QStringList{u"* hct.link opened COM1,9600,N,8,1 /dev/fake"_s,
                                   u"* hct.link state 3"_s, u"* hct.link state 0"_s, QString()}));
    // The times hold digits too, and are no codes.
    const QByteArray contents = lines().join(u'\n').toUtf8();
    QVERIFY(isIn(contents, "9600") && isIn(QByteArray("37333531"), pin));
    QVERIFY(!isIn(contents, pin));
    QVERIFY(puk.isEmpty() || !isIn(contents, puk));
}

void TestTraceFile::lateEchoOfTheCodesStaysOut_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("puk");
    QTest::addColumn<QString>("lastLine");
    const QByteArray puk("40962817");
    QTest::newRow("outside a frame") << QByteArray() << puk << u"* hct.link no answer: status 1"_s;
    QTest::newRow("in a frame that stays incomplete")
        << QByteArray::fromHex("6820206801") << puk << u"* hct.link no answer: status 1"_s;
    QTest::newRow("in a frame that it completes")
        << QByteArray::fromHex("680d0d6801") << QByteArray()
        << u"* hct.link wrong checksum: status 4"_s;
}

void TestTraceFile::lateEchoOfTheCodesStaysOut()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, puk);
    QFETCH(QString, lastLine);
    ModemFixture fixture;
    trace();
    fixture.control.sendPin("7351", puk);
    const QByteArray command = fixture.takeCommand();
    fixture.link.leaveModemPhase();
    request(fixture);
    fixture.reply(header + command);
    fixture.timeOut();
    const QStringList traced = lines();
    for (const QByteArray& code : {"7351"_ba, "40962817"_ba})
        QVERIFY(!isIn(traced.join(u'\n').toUtf8(), code));
    QCOMPARE(traced.at(traced.size() - 3), lastLine);
}

static QStringList& elsewhere()
{
    static QStringList lines;
    return lines;
}

void TestTraceFile::otherMessagesGoWhereTheyWent()
{
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { elsewhere() << text; });
    trace();
    qWarning("of somebody else");
    m_trace.reset();
    qWarning("after the trace");
    qInstallMessageHandler(before);
    QCOMPARE(elsewhere(), (QStringList{u"of somebody else"_s, u"after the trace"_s}));
    QCOMPARE(lines(), QStringList{QString()});
}

void TestTraceFile::withoutATraceNothingIsReported()
{
    QVERIFY(!linkEvents().isDebugEnabled() && !linkFrames().isDebugEnabled());
    trace();
    QVERIFY(linkEvents().isDebugEnabled() && linkFrames().isDebugEnabled());
    m_trace.reset();
    QVERIFY(!linkEvents().isDebugEnabled() && !linkFrames().isDebugEnabled());
}

void TestTraceFile::fileThatCannotBeWrittenIsTold_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("folder") << u"."_s << u"no es un archivo"_s;
    // The rest is the system's.
    QTest::newRow("no such folder") << u"no/hay"_s << QString();
}

void TestTraceFile::fileThatCannotBeWrittenIsTold()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    const QString file = m_folder->filePath(name);
    const TraceFile refused(file, std::chrono::steady_clock::now());
    QVERIFY(!refused.isOpen());
    const QString begin = u"No se puede escribir la traza en %1 (%2"_s.arg(file, reason);
    QCOMPARE(refused.error().left(begin.size()), begin);
    QVERIFY(!linkEvents().isDebugEnabled());
}

QTEST_GUILESS_MAIN(TestTraceFile)
#include "TestTraceFile.moc"
