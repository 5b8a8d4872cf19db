#pragma once

#include "EditorDialogs.h"

#include <QScopedValueRollback>

/// Passes everything on, and knows whether a box or dialog is up: then no window may be closed,
/// because the code that asks goes on in it.
class CountingDialogs final : public EditorDialogs {
public:
    explicit CountingDialogs(EditorDialogs& dialogs) : m_dialogs(dialogs) {}

    bool isAsking() const { return m_up > 0; }

    void tell(Icon icon, const QString& title, const QString& text) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        m_dialogs.tell(icon, title, text);
    }
    bool confirm(Icon icon, const QString& title, const QString& text) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        return m_dialogs.confirm(icon, title, text);
    }
    std::optional<QString> askText(const QString& title, const QString& prompt) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        return m_dialogs.askText(title, prompt);
    }
    QString openFile(const FileRequest& request) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        return m_dialogs.openFile(request);
    }
    QString saveFile(const FileRequest& request) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        return m_dialogs.saveFile(request);
    }
    int choose(Icon icon, const QString& title, const QString& text,
               const QStringList& buttons) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        return m_dialogs.choose(icon, title, text, buttons);
    }
    ChosenFile openFileByFilter(const FileRequest& request) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        return m_dialogs.openFileByFilter(request);
    }
    void print(const QString& documentName, const Drawing& draw) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        m_dialogs.print(documentName, draw);
    }
    void preview(const QString& documentName, const Drawing& draw) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        m_dialogs.preview(documentName, draw);
    }

private:
    EditorDialogs& m_dialogs;
    int m_up = 0;
};
