#include "CaptionUpdate.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Counts the requests to the window system for a label.
class CountingLabel : public QLabel {
public:
    using QLabel::QLabel;
    int events = 0;

protected:
    bool event(QEvent* event) override
    {
        ++events;
        return QLabel::event(event);
    }
};

} // namespace

class TestCaptionUpdate : public QObject {
    Q_OBJECT

private slots:
    void otherCaptionIsShown();
    void sameCaptionCausesNothing();
};

void TestCaptionUpdate::otherCaptionIsShown()
{
    QLabel label(u"08:00:00"_s);
    modUtilidades::updateCaption(label, u"08:00:01"_s);
    QCOMPARE(label.text(), u"08:00:01"_s);
}

void TestCaptionUpdate::sameCaptionCausesNothing()
{
    CountingLabel label(u"08:00:00"_s);
    label.show();
    QVERIFY(QTest::qWaitForWindowExposed(&label));
    QCoreApplication::processEvents();
    label.events = 0;
    modUtilidades::updateCaption(label, u"08:00:00"_s);
    QCoreApplication::processEvents();
    QCOMPARE(label.events, 0);
    modUtilidades::updateCaption(label, u"08:00:01"_s);
    QCoreApplication::processEvents();
    QVERIFY(label.events > 0);
}

QTEST_MAIN(TestCaptionUpdate)
#include "TestCaptionUpdate.moc"
