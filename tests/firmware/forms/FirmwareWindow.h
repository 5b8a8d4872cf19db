#pragma once

#include "FakeDialogs.h"
#include "Files.h"
#include "LinkFixture.h"
#include "frmProgramPROM.h"

#include <QMdiArea>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// The firmware window of a connected program. The test plays the clock.
struct FirmwareWindow : LinkFixture {
    FirmwareWindow()
    {
        area->resize(900, 700);
        form = new frmProgramPROM(*area, crono, link, log, dialogs);
        area->show();
        form->showForm();
        connect();
    }

    template<typename Control>
    Control* find(const char* name) const
    {
        auto* control = form->findChild<Control*>(QString::fromLatin1(name));
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    void click(const char* name) const
    {
        QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton);
    }
    bool enabled(const char* name) const { return find<QWidget>(name)->isEnabled(); }
    QString notes() const { return find<QPlainTextEdit>("txtNotas")->toPlainText(); }

    /// Lets the window read a file with these bytes; its path.
    QString read(const QByteArray& bytes, const QString& name = QStringLiteral("reloj.hex"))
    {
        const QString path = writeFile(folder.filePath(name), bytes);
        dialogs.paths = {path};
        click("cmdAbrir");
        return path;
    }
    /// One tick; what it sends, in hexadecimal.
    QByteArray sent() { return nextRequestBody().toHex(); }
    void acknowledge()
    {
        sent();
        answerHex("dd00");
    }
    void fail(int times)
    {
        while (times-- > 0) {
            sent();
            timeOut();
        }
    }

    const QTemporaryDir folder;
    FakeDialogs dialogs;
    std::unique_ptr<QMdiArea> area = std::make_unique<QMdiArea>();
    QPointer<frmProgramPROM> form;
};
