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

    /// As openFile; with the filter that was chosen.
    static ChosenFile openFileByFilter(const FileRequest& request);
    /// A box with these buttons; the number of the one pressed, from 0. The first one is the
    /// default; closing the box presses the last one.
    static int choose(Icon icon, const QString& title, const QString& text,
                      const QStringList& buttons);
};
