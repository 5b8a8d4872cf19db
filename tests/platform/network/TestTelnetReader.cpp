#include "TelnetReader.h"

#include <QTest>

/// The bytes of RFC 854, 855 and 2217: ff is IAC, fb WILL, fc WONT, fd DO, fe DONT, fa SB, f0 SE.
class TestTelnetReader : public QObject {
    Q_OBJECT
private slots:
    void dataIsPassedOn();
    void doubledByteIsOneOfTheData();
    void carriageReturnIsAByteLikeOthers();
    void requestIsACommand_data();
    void requestIsACommand();
    void commandWithoutOptionIsDropped_data();
    void commandWithoutOptionIsDropped();
    void subnegotiationHasItsValue();
    void doubledByteInAValueIsOne();
    void emptySubnegotiationHasNoValue();
    void valueIsKeptToItsBound();
    void subnegotiationWithoutEndIsLeftForTheNextCommand();
    void subnegotiationWithoutOptionEnds();
    void dataBeforeACommandComesWithIt();
    void chunksMakeNoDifference();

private:
    /// Reads all: each command as "fd2c" or "fa2c:650000", and at last the data as "data 4142".
    static QByteArray readAll(const QByteArray& bytes, qsizetype chunk);
    static QByteArray readAll(const char* hexadecimal)
    {
        const QByteArray bytes = QByteArray::fromHex(hexadecimal);
        return readAll(bytes, bytes.size());
    }
};

QByteArray TestTelnetReader::readAll(const QByteArray& bytes, qsizetype chunk)
{
    TelnetReader reader;
    QByteArray data;
    QByteArray all;
    for (qsizetype at = 0; at < bytes.size(); at += chunk) {
        const QByteArray part = bytes.mid(at, chunk);
        QByteArrayView rest = part;
        while (const auto command = reader.read(rest, data)) {
            all += QByteArray::number(command->verb, 16);
            all += QByteArray(1, static_cast<char>(command->option)).toHex();
            all += command->value.isEmpty() ? QByteArray() : ':' + command->value.toHex();
            all += ' ';
        }
    }
    return all + "data " + data.toHex();
}

void TestTelnetReader::dataIsPassedOn() { QCOMPARE(readAll("4100ff"), QByteArray("data 4100")); }

void TestTelnetReader::doubledByteIsOneOfTheData()
{
    QCOMPARE(readAll("41ffff42ffffffff"), QByteArray("data 41ff42ffff"));
}

void TestTelnetReader::carriageReturnIsAByteLikeOthers()
{
    QCOMPARE(readAll("0d000d0a0d"), QByteArray("data 0d000d0a0d"));
}

void TestTelnetReader::requestIsACommand_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("all");
    QTest::newRow("WILL binary") << QByteArray::fromHex("fffb00") << QByteArray("fb00 data ");
    QTest::newRow("WONT go ahead") << QByteArray::fromHex("fffc03") << QByteArray("fc03 data ");
    QTest::newRow("DO COM port") << QByteArray::fromHex("fffd2c") << QByteArray("fd2c data ");
    QTest::newRow("DONT echo") << QByteArray::fromHex("fffe01") << QByteArray("fe01 data ");
    QTest::newRow("WILL 255") << QByteArray::fromHex("fffbff") << QByteArray("fbff data ");
}

void TestTelnetReader::requestIsACommand()
{
    QFETCH(QByteArray, bytes);
    QTEST(readAll(bytes, 3), "all");
}

void TestTelnetReader::commandWithoutOptionIsDropped_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("NOP") << QByteArray::fromHex("41fff142");
    QTest::newRow("data mark") << QByteArray::fromHex("41fff242");
    QTest::newRow("are you there") << QByteArray::fromHex("41fff642");
    QTest::newRow("go ahead") << QByteArray::fromHex("41fff942");
    QTest::newRow("end without begin") << QByteArray::fromHex("41fff042");
    QTest::newRow("no command at all") << QByteArray::fromHex("41ff1042");
}

void TestTelnetReader::commandWithoutOptionIsDropped()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(readAll(bytes, 4), QByteArray("data 4142"));
}

void TestTelnetReader::subnegotiationHasItsValue()
{
    QCOMPARE(readAll("fffa2c6500002580fff0"), QByteArray("fa2c:6500002580 data "));
}

void TestTelnetReader::doubledByteInAValueIsOne()
{
    QCOMPARE(readAll("fffa2c6bfffffff0"), QByteArray("fa2c:6bff data "));
}

void TestTelnetReader::emptySubnegotiationHasNoValue()
{
    QCOMPARE(readAll("fffa2cfff041"), QByteArray("fa2c data 41"));
}

void TestTelnetReader::valueIsKeptToItsBound()
{
    const QByteArray value = QByteArray(64, 'v');
    const QByteArray sent = QByteArray::fromHex("fffa2c") + value + QByteArray(100000, 'w') +
                            QByteArray::fromHex("fff041");
    QCOMPARE(readAll(sent, 4096), QByteArray("fa2c:" + value.toHex() + " data 41"));
}

void TestTelnetReader::subnegotiationWithoutEndIsLeftForTheNextCommand()
{
    QCOMPARE(readAll("fffa2c65fffd2c41"), QByteArray("fd2c data 41"));
}

void TestTelnetReader::subnegotiationWithoutOptionEnds()
{
    QCOMPARE(readAll("fffafff041"), QByteArray("faff data 41"));
}

void TestTelnetReader::dataBeforeACommandComesWithIt()
{
    TelnetReader reader;
    const QByteArray bytes = QByteArray::fromHex("4142fffd2c43");
    QByteArrayView rest = bytes;
    QByteArray data;
    QVERIFY(reader.read(rest, data));
    QCOMPARE(data, QByteArray("AB"));
    QCOMPARE(rest, QByteArrayView("C"));
}

void TestTelnetReader::chunksMakeNoDifference()
{
    const QByteArray bytes =
        QByteArray::fromHex("41fffb00ffff42fffa2c65fffff00a00fff043fff1fffd2cfffa2c6bfff0");
    const QByteArray expected = "fb00 fa2c:65fff00a00 fd2c fa2c:6b data 41ff4243";
    for (qsizetype chunk = 1; chunk <= bytes.size(); ++chunk)
        QCOMPARE(readAll(bytes, chunk), expected);
}

QTEST_GUILESS_MAIN(TestTelnetReader)
#include "TestTelnetReader.moc"
