#pragma once

#include "Dialogs.h"

/// The toolkit's boxes and dialogs, over the active window.
class WidgetDialogs final : public Dialogs {
public:
    void tell(Icon icon, const QString& title, const QString& text) override;
    bool confirm(Icon icon, const QString& title, const QString& text) override;
    std::optional<QString> askText(const QString& title, const QString& prompt) override;
    QString openFile(const FileRequest& request) override;
    QString saveFile(const FileRequest& request) override;
};
