#pragma once

#include "../ProgrammeSamples.h"
#include "FakeDialogs.h"
#include "LinkFixture.h"
#include "TextUpDown.h"
#include "frmProg.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

/// A programming window over a main window. The test plays the clock.
struct ProgWindow : LinkFixture {
    explicit ProgWindow(ClockModel model, const QByteArray& generalData)
    {
        connect();
        globais.GeneralData = generalData;
        owner.resize(400, 300);
        owner.show();
        if (model == ClockModel::Hct7200)
            form = new frmProgHCT7200(&owner, crono, link, globais, log, dialogs);
        else
            form = new frmProgHCT7300(&owner, crono, link, globais, log, dialogs);
        form->open();
        active = QTest::qWaitForWindowActive(form);
    }
    explicit ProgWindow(ClockModel model) : ProgWindow(model, samples::generalData(model)) {}

    /// The clock answers with its holidays: the window is ready.
    void becomeReady(const QByteArray& holidays = samples::holidaysAnswer())
    {
        nextRequestBody();
        answer(holidays);
    }
    /// The clock accepts every request of a send; the bodies of its five requests.
    QByteArrayList acceptEverything(const QByteArray& generalData)
    {
        QByteArrayList bodies;
        const QByteArray answers[] = {generalData, QByteArray::fromHex("da00"),
                                      QByteArray::fromHex("da00"), QByteArray::fromHex("da00"),
                                      QByteArray::fromHex("d200")};
        for (const QByteArray& accepted : answers) {
            bodies.append(nextRequestBody());
            answer(accepted);
        }
        return bodies;
    }

    template<typename Control>
    Control* find(const QString& name) const
    {
        Control* control = form->findChild<Control*>(name);
        if (!control)
            qFatal("No control %s", qPrintable(name));
        return control;
    }
    template<typename Control>
    Control* find(const QString& name, int index) const
    {
        return find<Control>(QStringLiteral("%1(%2)").arg(name).arg(index));
    }
    TextUpDown* time(int row) const { return find<TextUpDown>(QStringLiteral("txtHora"), row); }
    TextUpDown* field(const QString& name, int index) const
    {
        return find<TextUpDown>(name, index);
    }
    QCheckBox* day(const QString& name, int row) const { return find<QCheckBox>(name, row); }
    QLabel* label(const QString& name) const { return find<QLabel>(name); }

    void click(const QString& button) const
    {
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }
    /// Clicks the check box on its mark.
    void clickDay(const QString& name, int row) const
    {
        QCheckBox* box = day(name, row);
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }
    void clickTab(int index) const
    {
        auto* tabs = find<QTabBar>(QStringLiteral("tabPrincipal"));
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
    }
    static void type(const char* text)
    {
        for (; *text; ++text)
            QTest::keyClick(QApplication::focusWidget(), *text);
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    /// Holds a key down until it has repeated a few times.
    static void hold(Qt::Key key)
    {
        QTest::keyPress(QApplication::focusWidget(), key);
        for (int repeat = 0; repeat < 5 && QApplication::focusWidget(); ++repeat) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QApplication::sendEvent(QApplication::focusWidget(), &event);
        }
        if (QApplication::focusWidget())
            QTest::keyRelease(QApplication::focusWidget(), key);
    }
    bool isVisible(const QString& name) const { return find<QWidget>(name)->isVisible(); }
    bool isEnabled(const QString& name) const { return find<QWidget>(name)->isEnabled(); }

    FakeDialogs dialogs;
    QWidget owner;
    QPointer<frmProg> form;
    bool active = false;
};
