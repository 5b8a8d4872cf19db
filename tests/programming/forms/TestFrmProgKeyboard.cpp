#include "ProgWindow.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

constexpr auto hct7200 = ClockModel::Hct7200;
constexpr auto hct7300 = ClockModel::Hct7300;

class TestFrmProgKeyboard : public QObject {
    Q_OBJECT
private slots:
    void lockedWindowHasItsFocusOnTheNotice();
    void readyWindowHasItsFocusOnTheFirstHour();
    void tabWalksARowAndGoesOnToTheNext();
    void spaceTogglesADay();
    void arrowsGoFromDayToDayAndFromRowToRow();
    void enterBeginsTheNextRow();
    void enterNeitherSendsNorOpens();
    void enterPressesTheButtonWithTheFocus();
    void repeatingTheDaysOfTheRowAbove();
    void repeatingInTheFirstRowChangesNothing();
    void accessKeysChooseTabs();
    void pageKeysWithControlWalkTheTabs();
    void holidaysByKeyboard();
    void walkingTheTabsKeepsTheFocusOnThem();
    void anotherBlockBeginsAtItsFirstRow();
    void escapeLeavesAtItsSecondPressOnly();
    void heldEscapeDoesNotLeave();
    void oneEscapeDuringASendDoesNotLeave();
    void heldEnterOnEnviarDoesNotCancel();
    void furtherEntersDuringASendDoNotCancel();
    void heldEnterPressesItsButtonOnce();
    void schoolWeekByKeyboardAlone();
    void smallWindowScrollsToTheFocus();
    void captionsScrollSidewaysWithTheirColumns();
    void captionsCoverNoRow();
    void smallHolidayPageScrollsToTheFocus();
    void windowFitsASmallScreen_data();
    void windowFitsASmallScreen();
};

void TestFrmProgKeyboard::lockedWindowHasItsFocusOnTheNotice()
{
    ProgWindow w(hct7200);
    QVERIFY(w.find<QWidget>(u"fraAviso"_s)->hasFocus());
    QVERIFY(w.find<QWidget>(u"fraAviso"_s)
                ->accessibleDescription()
                .startsWith(u"Espere unos instantes mientras se procede"_s));
    w.press(Qt::Key_Tab);
    QVERIFY(w.find<QPushButton>(u"cmdCancelar"_s)->hasFocus());
}

void TestFrmProgKeyboard::readyWindowHasItsFocusOnTheFirstHour()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    QCOMPARE(w.time(0)->fieldWithFocus(), 0);
}

void TestFrmProgKeyboard::tabWalksARowAndGoesOnToTheNext()
{
    ProgWindow w(hct7300);
    w.becomeReady();
    w.press(Qt::Key_Tab);
    QCOMPARE(w.time(0)->fieldWithFocus(), 1);
    for (const QString& name :
         {u"chkLuns"_s, u"chkMartes"_s, u"chkMercores"_s, u"chkXoves"_s, u"chkVenres"_s,
          u"chkSabado"_s, u"chkDomingo"_s, u"chkFestivo"_s, u"chkVacaciones"_s}) {
        w.press(Qt::Key_Tab);
        QVERIFY2(w.day(name, 0)->hasFocus(), qPrintable(name));
    }
    w.press(Qt::Key_Tab);
    QCOMPARE(w.time(1)->fieldWithFocus(), 0);
    w.press(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(w.day(u"chkVacaciones"_s, 0)->hasFocus());
}

void TestFrmProgKeyboard::spaceTogglesADay()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.day(u"chkXoves"_s, 7)->setFocus();
    w.press(Qt::Key_Space);
    QVERIFY(w.day(u"chkXoves"_s, 7)->isChecked());
    w.press(Qt::Key_Space);
    QVERIFY(!w.day(u"chkXoves"_s, 7)->isChecked());
}

void TestFrmProgKeyboard::arrowsGoFromDayToDayAndFromRowToRow()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.day(u"chkLuns"_s, 15)->setFocus();
    w.press(Qt::Key_Right);
    QVERIFY(w.day(u"chkMartes"_s, 15)->hasFocus());
    w.press(Qt::Key_Down);
    QVERIFY(w.day(u"chkMartes"_s, 16)->hasFocus());
    w.press(Qt::Key_Up);
    w.press(Qt::Key_Left);
    QVERIFY(w.day(u"chkLuns"_s, 15)->hasFocus());
    w.press(Qt::Key_Left);
    QCOMPARE(w.time(15)->fieldWithFocus(), 0);
    w.press(Qt::Key_Right);
    w.press(Qt::Key_Right);
    QVERIFY(w.day(u"chkLuns"_s, 15)->hasFocus());
    w.day(u"chkVenres"_s, 31)->setFocus();
    w.press(Qt::Key_Down);
    w.press(Qt::Key_Right);
    QVERIFY(w.day(u"chkVenres"_s, 31)->hasFocus());
}

void TestFrmProgKeyboard::enterBeginsTheNextRow()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.press(Qt::Key_Return);
    QCOMPARE(w.time(1)->fieldWithFocus(), 0);
    w.day(u"chkVenres"_s, 1)->setFocus();
    w.press(Qt::Key_Enter);
    QCOMPARE(w.time(2)->fieldWithFocus(), 0);
}

void TestFrmProgKeyboard::enterNeitherSendsNorOpens()
{
    ProgWindow w(hct7300);
    w.becomeReady();
    w.find<TextUpDown>(u"txtModo"_s)->setFieldFocus(0, Qt::OtherFocusReason);
    w.press(Qt::Key_Return);
    QCOMPARE(w.find<TextUpDown>(u"txtDuracion"_s)->fieldWithFocus(), 0);
    w.time(31)->setFieldFocus(1, Qt::OtherFocusReason);
    w.press(Qt::Key_Return);
    QVERIFY(w.dialogs.fileRequests.isEmpty());
    w.tick(5);
    QVERIFY(!w.hasRequest());
    QVERIFY(w.form->isVisible());
}

void TestFrmProgKeyboard::enterPressesTheButtonWithTheFocus()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.find<QPushButton>(u"cmdGardar"_s)->setFocus();
    w.press(Qt::Key_Return);
    QCOMPARE(w.dialogs.fileRequests.count(), 1);
}

void TestFrmProgKeyboard::repeatingTheDaysOfTheRowAbove()
{
    ProgWindow w(hct7300);
    w.becomeReady();
    w.clickDay(u"chkMartes"_s, 4);
    w.clickDay(u"chkVacaciones"_s, 4);
    w.clickDay(u"chkLuns"_s, 5);
    w.time(4)->setValues(9, 30);
    w.time(5)->setFieldFocus(1, Qt::OtherFocusReason);
    w.press(Qt::Key_D, Qt::ControlModifier);
    QVERIFY(w.day(u"chkMartes"_s, 5)->isChecked());
    QVERIFY(w.day(u"chkVacaciones"_s, 5)->isChecked());
    QVERIFY(!w.day(u"chkLuns"_s, 5)->isChecked());
    QCOMPARE(w.time(5)->value(0), 0);
}

void TestFrmProgKeyboard::repeatingInTheFirstRowChangesNothing()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.clickDay(u"chkLuns"_s, 0);
    w.press(Qt::Key_D, Qt::ControlModifier);
    QVERIFY(w.day(u"chkLuns"_s, 0)->isChecked());
}

void TestFrmProgKeyboard::accessKeysChooseTabs()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    auto* tabs = w.find<QTabBar>(u"tabPrincipal"_s);
    w.press(Qt::Key_2, Qt::AltModifier);
    QCOMPARE(tabs->currentIndex(), 1);
    w.press(Qt::Key_F, Qt::AltModifier);
    QCOMPARE(tabs->currentIndex(), 3);
}

void TestFrmProgKeyboard::pageKeysWithControlWalkTheTabs()
{
    ProgWindow w(hct7200);
    auto* tabs = w.find<QTabBar>(u"tabPrincipal"_s);
    w.press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(tabs->currentIndex(), 0);
    w.becomeReady();
    w.press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(tabs->currentIndex(), 1);
    w.press(Qt::Key_PageUp, Qt::ControlModifier);
    w.press(Qt::Key_PageUp, Qt::ControlModifier);
    QCOMPARE(tabs->currentIndex(), 0);
}

void TestFrmProgKeyboard::holidaysByKeyboard()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.press(Qt::Key_F, Qt::AltModifier);
    w.type("0601");
    w.press(Qt::Key_Return);
    w.type("1/5");
    w.press(Qt::Key_Return);
    w.type("15");
    w.press(Qt::Key_Return);
    QCOMPARE(w.field(u"txtFest"_s, 0)->value(0), 6);
    QCOMPARE(w.field(u"txtFest"_s, 0)->value(1), 1);
    QCOMPARE(w.field(u"txtFest"_s, 1)->value(0), 1);
    QCOMPARE(w.field(u"txtFest"_s, 1)->value(1), 5);
    QCOMPARE(w.field(u"txtFest"_s, 2)->value(0), 15);
    QCOMPARE(w.field(u"txtFest"_s, 3)->fieldWithFocus(), 0);
    w.press(Qt::Key_F6);
    QCOMPARE(w.field(u"txtVacacIni"_s, 0)->fieldWithFocus(), 0);
    w.press(Qt::Key_Return);
    QCOMPARE(w.field(u"txtVacacFin"_s, 0)->fieldWithFocus(), 0);
    w.press(Qt::Key_F6);
    QCOMPARE(w.field(u"txtFest"_s, 0)->fieldWithFocus(), 0);
    w.field(u"txtVacacFin"_s, 7)->setFieldFocus(0, Qt::OtherFocusReason);
    w.press(Qt::Key_Return);
    QCOMPARE(w.field(u"txtVacacFin"_s, 7)->fieldWithFocus(), 0);
}

void TestFrmProgKeyboard::walkingTheTabsKeepsTheFocusOnThem()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    auto* tabs = w.find<QTabBar>(u"tabPrincipal"_s);
    tabs->setFocus();
    for (int tab = 1; tab <= 3; ++tab) {
        w.press(Qt::Key_Right);
        QCOMPARE(tabs->currentIndex(), tab);
        QVERIFY(tabs->hasFocus());
    }
}

void TestFrmProgKeyboard::anotherBlockBeginsAtItsFirstRow()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.time(12)->setFieldFocus(1, Qt::TabFocusReason);
    w.press(Qt::Key_PageDown, Qt::ControlModifier);
    QCOMPARE(w.label(u"lblPrograma"_s)->text(), u"2"_s);
    QCOMPARE(w.time(0)->fieldWithFocus(), 0);
}

void TestFrmProgKeyboard::escapeLeavesAtItsSecondPressOnly()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.press(Qt::Key_Escape);
    QVERIFY(w.form->isVisible());
    QVERIFY(w.find<QPushButton>(u"cmdCancelar"_s)->hasFocus());
    w.press(Qt::Key_Escape);
    QVERIFY(!w.form->isVisible());
}

void TestFrmProgKeyboard::heldEscapeDoesNotLeave()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.hold(Qt::Key_Escape);
    QVERIFY(w.form->isVisible());
    QVERIFY(w.find<QPushButton>(u"cmdCancelar"_s)->hasFocus());
}

void TestFrmProgKeyboard::oneEscapeDuringASendDoesNotLeave()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.click(u"cmdEnviar"_s);
    w.press(Qt::Key_Escape);
    QVERIFY(w.form->isVisible());
    QVERIFY(w.find<QPushButton>(u"cmdCancelar"_s)->hasFocus());
    w.press(Qt::Key_Escape);
    QVERIFY(!w.form->isVisible());
}

void TestFrmProgKeyboard::heldEnterOnEnviarDoesNotCancel()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.find<QPushButton>(u"cmdEnviar"_s)->setFocus();
    w.hold(Qt::Key_Return);
    QVERIFY(w.form->isVisible());
    QCOMPARE(w.acceptEverything(samples::generalData(hct7200)).count(), 5);
    QVERIFY(!w.form->isVisible());
}

void TestFrmProgKeyboard::furtherEntersDuringASendDoNotCancel()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.find<QPushButton>(u"cmdEnviar"_s)->setFocus();
    for (int press = 0; press < 4; ++press)
        w.press(Qt::Key_Enter);
    QVERIFY(w.form->isVisible());
    QVERIFY(w.isVisible(u"fraAviso"_s));
}

void TestFrmProgKeyboard::heldEnterPressesItsButtonOnce()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.find<QPushButton>(u"cmdAbrir"_s)->setFocus();
    w.hold(Qt::Key_Return);
    QCOMPARE(w.dialogs.fileRequests.count(), 1);
}

void TestFrmProgKeyboard::schoolWeekByKeyboardAlone()
{
    // Twelve bells Monday to Friday, five holidays, three vacations, sent; the mouse stays still.
    ProgWindow w(hct7200);
    w.becomeReady();
    const char* const bells[] = {"0800", "0855", "0950", "1045", "1115", "1210",
                                 "1305", "1400", "1530", "1625", "1720", "1800"};
    for (int row = 0; row < 12; ++row) {
        w.type(bells[row]);
        if (row == 0) {
            for (int day = 0; day < 5; ++day) {
                w.press(Qt::Key_Tab);
                w.press(Qt::Key_Space);
            }
        } else {
            w.press(Qt::Key_D, Qt::ControlModifier);
        }
        w.press(Qt::Key_Return);
    }
    w.press(Qt::Key_F, Qt::AltModifier);
    for (const char* holiday : {"0601", "0105", "2507", "1210", "0812"}) {
        w.type(holiday);
        w.press(Qt::Key_Return);
    }
    w.press(Qt::Key_F6);
    for (const char* date : {"2312", "0701", "2903", "0504", "2306", "1009"}) {
        w.type(date);
        w.press(Qt::Key_Return);
    }
    w.press(Qt::Key_E, Qt::AltModifier);
    QTRY_VERIFY(w.isVisible(u"fraAviso"_s));
    const QByteArrayList bodies = w.acceptEverything(samples::generalData(hct7200));
    QCOMPARE(bodies[1], QByteArray::fromHex("da01"
                                            "e8c0e8f7e9f2eaedebcfecca"
                                            "edc5eec0efdef0d9f1d4f2c0") +
                            QByteArray(42, '\0') + QByteArray::fromHex("0d"));
    QCOMPARE(bodies[4], QByteArray::fromHex("d200"
                                            "06010105190"
                                            "70c0a080c") +
                            QByteArray(22, '\0') +
                            QByteArray::fromHex("170c07011d030504"
                                                "17060a09") +
                            QByteArray(20, '\0'));
    QVERIFY(!w.form->isVisible());
}

void TestFrmProgKeyboard::smallWindowScrollsToTheFocus()
{
    ProgWindow w(hct7300);
    w.becomeReady();
    w.form->resize(500, 320);
    const auto* area = w.find<QFrame>(u"fraCadroAvisos"_s)->findChild<QScrollArea*>();
    const auto isInSight = [&](const QWidget* widget) {
        const QRect place(widget->mapTo(area->viewport(), QPoint()), widget->size());
        return area->viewport()->rect().contains(place);
    };
    QVERIFY(!isInSight(w.time(15)));
    w.day(u"chkLuns"_s, 12)->setFocus();
    for (int press = 0; press < 3; ++press)
        w.press(Qt::Key_Down);
    QVERIFY(isInSight(w.day(u"chkLuns"_s, 15)));
    w.day(u"chkVacaciones"_s, 20)->setFocus();
    QVERIFY(isInSight(w.day(u"chkVacaciones"_s, 20)));
    w.time(0)->setFieldFocus(0, Qt::OtherFocusReason);
    QVERIFY(isInSight(w.time(0)));
}

void TestFrmProgKeyboard::captionsScrollSidewaysWithTheirColumns()
{
    ProgWindow w(hct7300);
    w.becomeReady();
    w.form->resize(500, 320);
    auto* area = w.find<QFrame>(u"fraCadroAvisos"_s)->findChild<QScrollArea*>();
    const auto centreOf = [area](const QWidget* widget) {
        return widget->mapTo(area, widget->rect().center());
    };
    const QLabel* caption = nullptr;
    for (const auto* label : area->findChildren<QLabel*>())
        if (label->text() == u"Vac"_s)
            caption = label;
    const int height = centreOf(caption).y();
    QVERIFY(centreOf(caption).x() > area->width());
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    area->horizontalScrollBar()->setValue(area->horizontalScrollBar()->maximum());
    QVERIFY(centreOf(caption).x() < area->width());
    QVERIFY(qAbs(centreOf(caption).x() - centreOf(w.day(u"chkVacaciones"_s, 31)).x()) <= 1);
    QCOMPARE(centreOf(caption).y(), height);
    QVERIFY(!caption->visibleRegion().isEmpty());
}

void TestFrmProgKeyboard::captionsCoverNoRow()
{
    ProgWindow w(hct7300);
    w.becomeReady();
    w.form->resize(500, 320);
    auto* area = w.find<QFrame>(u"fraCadroAvisos"_s)->findChild<QScrollArea*>();
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    area->ensureWidgetVisible(w.time(3), 0, 0);
    QCOMPARE(w.time(3)->visibleRegion().boundingRect(), w.time(3)->rect());
    const auto captions = area->findChildren<QLabel*>(QRegularExpression(u"^lblNumero"_s));
    QCOMPARE(captions.size(), 2);
    QCOMPARE(captions[0]->visibleRegion().boundingRect(), captions[0]->rect());
}

void TestFrmProgKeyboard::smallHolidayPageScrollsToTheFocus()
{
    ProgWindow w(hct7200);
    w.becomeReady();
    w.clickTab(3);
    w.form->resize(w.form->minimumSizeHint().width(), 250);
    QVERIFY(w.form->height() < 300);
    const auto* area = w.find<QFrame>(u"fraCadroFestVacac"_s)->findChild<QScrollArea*>();
    TextUpDown* last = w.field(u"txtVacacFin"_s, 7);
    last->setFieldFocus(0, Qt::OtherFocusReason);
    const QRect place(last->mapTo(area->viewport(), QPoint()), last->size());
    QVERIFY(area->viewport()->rect().contains(place));
}

void TestFrmProgKeyboard::windowFitsASmallScreen_data()
{
    QTest::addColumn<ClockModel>("model");
    QTest::newRow("HCT-7200") << hct7200;
    QTest::newRow("HCT-7300") << hct7300;
}

void TestFrmProgKeyboard::windowFitsASmallScreen()
{
    QFETCH(ClockModel, model);
    ProgWindow w(model);
    w.becomeReady();
    w.form->adjustSize();
    w.form->resize(1280, 680);
    const QRect room = w.form->rect();
    const auto controls = w.form->findChildren<QWidget*>();
    for (const QWidget* control : controls)
        if (control->isVisible() && control->focusPolicy() != Qt::NoFocus)
            QVERIFY2(room.contains(QRect(control->mapTo(w.form, QPoint()), control->size())),
                     qPrintable(control->objectName()));
    const auto* area = w.find<QFrame>(u"fraCadroAvisos"_s)->findChild<QScrollArea*>();
    QCOMPARE(area->verticalScrollBar()->maximum(), 0);
    QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
    QVERIFY(w.form->minimumSizeHint().width() < 1280);
}

QTEST_MAIN(TestFrmProgKeyboard)
#include "TestFrmProgKeyboard.moc"
