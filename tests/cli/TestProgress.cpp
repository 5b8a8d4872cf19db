#include "Progress.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// What a long job tells on its way.
class TestProgress : public QObject {
    Q_OBJECT
private slots:
    void timeLeftIsToldInSecondsOrMinutes_data();
    void timeLeftIsToldInSecondsOrMinutes();
};

void TestProgress::timeLeftIsToldInSecondsOrMinutes_data()
{
    QTest::addColumn<int>("done");
    QTest::addColumn<int>("secondsLeft");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing done yet") << 0 << 0 << u"Enviando: 0 % (0 de 200)"_s;
    QTest::newRow("seconds") << 90 << 12 << u"Enviando: 45 % (90 de 200), quedan 12 s"_s;
    QTest::newRow("minutes, rounded up") << 1 << 61 << u"Enviando: 0 % (1 de 200), quedan 2 min"_s;
    QTest::newRow("a minute") << 90 << 60 << u"Enviando: 45 % (90 de 200), queda 1 min"_s;
    QTest::newRow("almost all") << 199 << 1 << u"Enviando: 99 % (199 de 200), queda 1 s"_s;
    QTest::newRow("all") << 200 << 0 << u"Enviando: 100 % (200 de 200)"_s;
}

void TestProgress::timeLeftIsToldInSecondsOrMinutes()
{
    QFETCH(int, done);
    QFETCH(int, secondsLeft);
    QFETCH(QString, text);
    QCOMPARE(Progress::text(u"Enviando"_s, done, 200, std::chrono::seconds(secondsLeft)), text);
}

QTEST_GUILESS_MAIN(TestProgress)
#include "TestProgress.moc"
