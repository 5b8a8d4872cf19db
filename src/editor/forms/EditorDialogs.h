#pragma once

#include "Dialogs.h"

#include <functional>

class QPrinter;

/// The boxes and dialogs of the editor. It asks the operator only through this, so that tests can
/// answer.
class EditorDialogs : public Dialogs {
public:
    /// A box with these buttons; the number of the one pressed, from 0. The first one is the
    /// default; closing the box presses the last one.
    virtual int choose(Icon icon, const QString& title, const QString& text,
                       const QStringList& buttons) = 0;
    /// As openFile; with the filter that was chosen.
    virtual ChosenFile openFileByFilter(const FileRequest& request) = 0;

    using Drawing = std::function<void(QPrinter& printer)>;
    /// Lets the operator choose a printer, and draws on it unless it was cancelled.
    virtual void print(const QString& documentName, const Drawing& draw) = 0;
    /// Shows what would be printed; it can be printed from there.
    virtual void preview(const QString& documentName, const Drawing& draw) = 0;
};

/// The title of boxes that ask about no window in particular.
inline QString editorTitle() { return QStringLiteral("Editor de programas HCT"); }
