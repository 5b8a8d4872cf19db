#pragma once

#include "EditorDialogs.h"
#include "WidgetDialogs.h"

/// The toolkit's boxes and dialogs, over the active window.
class WidgetEditorDialogs final : public EditorDialogs {
public:
    void tell(Icon icon, const QString& title, const QString& text) override;
    bool confirm(Icon icon, const QString& title, const QString& text) override;
    std::optional<QString> askText(const QString& title, const QString& prompt) override;
    QString openFile(const FileRequest& request) override;
    QString saveFile(const FileRequest& request) override;
    int choose(Icon icon, const QString& title, const QString& text,
               const QStringList& buttons) override;
    ChosenFile openFileByFilter(const FileRequest& request) override;
    void print(const QString& documentName, const Drawing& draw) override;
    void preview(const QString& documentName, const Drawing& draw) override;

private:
    WidgetDialogs m_common;
};
