#pragma once

#include "EditorDialogs.h"

#include <QScopedValueRollback>

/// Passes everything on, and knows whether a box or dialog is up: then no window may be closed,
/// because the code that asks goes on in it. File dialogs that have no folder of their own begin in
/// that of `startFolder`.
class CountingDialogs final : public EditorDialogs {
public:
    CountingDialogs(EditorDialogs& dialogs, const std::function<QString()>& startFolder)
        : m_dialogs(dialogs), m_startFolder(startFolder)
    {}

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
        return m_dialogs.openFile(placed(request));
    }
    QString saveFile(const FileRequest& request) override
    {
        const QScopedValueRollback up(m_up, m_up + 1);
        return m_dialogs.saveFile(placed(request));
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
        return m_dialogs.openFileByFilter(placed(request));
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
    FileRequest placed(FileRequest request) const
    {
        if (request.directory.isEmpty())
            request.directory = m_startFolder();
        return request;
    }

    EditorDialogs& m_dialogs;
    const std::function<QString()> m_startFolder;
    int m_up = 0;
};
