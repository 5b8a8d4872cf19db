#pragma once

#include "ConnectedProgram.h"
#include "TextUpDown.h"
#include "frmPrincipal.h"
#include "frmProg.h"

#include <QCheckBox>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

/// The 66 bytes of a block as the simulator prints them.
inline QString alarms(const QByteArray& hexadecimal)
{
    return QString::fromLatin1(hexadecimal.leftJustified(132, '0'));
}

/// The program connected, with the programming window open and the clock's holidays read.
struct ProgrammingDesk {
    explicit ProgrammingDesk(const QStringList& options) : run(options)
    {
        run.choose("mnuConectar");
    }

    bool open()
    {
        if (!QTest::qWaitFor([this] { return run.isEstablished(); }, patience))
            return false;
        run.choose("mnuProgramacion");
        form = run.program.mainWindow().findChild<frmProg*>();
        return form && isReady();
    }
    bool isReady()
    {
        return QTest::qWaitFor([this] { return find<QWidget>("fraEnvolvente")->isVisible(); },
                               patience);
    }
    template<typename Control>
    Control* find(const char* name) const
    {
        return form->findChild<Control*>(QString::fromUtf8(name));
    }
    void click(const char* name) const
    {
        QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton);
    }
    void clickTab(int index) const
    {
        auto* tabs = find<QTabBar>("tabPrincipal");
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(index).center());
    }
    void clickDay(const char* name) const
    {
        auto* box = find<QCheckBox>(name);
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }
    /// Types into the fields of a TextUpDown.
    void type(const char* name, const QList<QByteArray>& numbers) const
    {
        auto* target = find<TextUpDown>(name);
        for (int field = 0; field < numbers.size(); ++field) {
            target->setFieldFocus(field, Qt::OtherFocusReason);
            QTest::keyClicks(target, QString::fromLatin1(numbers[field]));
        }
    }
    /// Saves to a file, clears the window and loads the file again.
    void saveClearAndLoad(const QString& path)
    {
        run.dialogs.paths = {path, path};
        click("cmdGardar");
        click("cmdBorrar");
        QCOMPARE(find<TextUpDown>("txtHora(0)")->value(0), 0);
        click("cmdAbrir");
    }
    bool isClosed() const
    {
        return QTest::qWaitFor([this] { return form.isNull(); }, patience);
    }

    ConnectedProgram run;
    QPointer<frmProg> form;
};
