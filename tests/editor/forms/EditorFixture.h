#pragma once

#include "EditorProgram.h"
#include "FakeEditorDialogs.h"
#include "FakeTimer.h"
#include "MemoryRegistry.h"
#include "TextUpDown.h"
#include "frmEditor.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QPointer>
#include <QStatusBar>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>

/// The editor with one window, in a folder of its own.
struct EditorFixture {
    explicit EditorFixture(const QStringList& paths = {},
                           std::optional<ClockModel> model = std::nullopt)
    {
        program.start(paths, model);
        window = program.windows().constFirst();
        // It opens and offers as soon as events run.
        QCoreApplication::processEvents();
        frmEditor* last = program.windows().constLast();
        active = QTest::qWaitForWindowActive(last) && hasRows(*last);
    }

    /// Waits until the window has its first page, which it makes once it has been painted.
    static bool hasRows(const frmEditor& window)
    {
        return QTest::qWaitFor(
            [&window] { return window.findChild<TextUpDown*>(QStringLiteral("txtHora(0)")); });
    }

    QString path(const QString& name) const { return folder.filePath(name); }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("Cannot write %s", qPrintable(path));
    }

    template<typename Control>
    Control* find(const QString& name) const
    {
        Control* control = window->findChild<Control*>(name);
        if (!control)
            qFatal("No control %s", qPrintable(name));
        return control;
    }
    void choose(const QString& entry) const { find<QAction>(entry)->trigger(); }
    TextUpDown* time(int row) const
    {
        return find<TextUpDown>(QStringLiteral("txtHora(%1)").arg(row));
    }
    QCheckBox* monday(int row) const
    {
        return find<QCheckBox>(QStringLiteral("chkLuns(%1)").arg(row));
    }
    void clickNumber(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::mouseClick(find<QWidget>(QStringLiteral("lblOrde(%1)").arg(row)), Qt::LeftButton,
                          modifiers);
    }
    void showTab(int tab) const
    {
        find<QTabBar>(QStringLiteral("tabPrincipal"))->setCurrentIndex(tab);
    }
    int tab() const { return find<QTabBar>(QStringLiteral("tabPrincipal"))->currentIndex(); }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void type(const char* text)
    {
        for (; *text; ++text)
            QTest::keyClick(QApplication::focusWidget(), *text);
    }
    const Alarm& alarm(int block, std::size_t row) const
    {
        return window->document().programme().blocks[static_cast<std::size_t>(block)].Alarms[row];
    }
    QString message() const { return window->statusBar()->currentMessage(); }

    QTemporaryDir folder;
    FakeEditorDialogs dialogs;
    MemoryRegistry registry;
    EditorProgram program{{dialogs, registry, folder.filePath(QStringLiteral("recovery")),
                           [] { return std::make_unique<FakeTimer>(); },
                           folder.filePath(QStringLiteral("documents"))}};
    QPointer<frmEditor> window;
    bool active = false;
};
