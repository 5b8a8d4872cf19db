#pragma once

#include <QObject>

class EditorDialogs;
class ProgrammeDocument;

/// Saves a document and asks before anything is lost. When a call returns, a box may have been up
/// meanwhile.
class DocumentFiles final : public QObject {
    Q_OBJECT
public:
    DocumentFiles(ProgrammeDocument& document, EditorDialogs& dialogs, QObject* parent = nullptr);

    /// Asks for a name where there is none, and for permission where something would be lost. False
    /// when it was not saved.
    bool save();
    bool saveAs();
    /// Asks what to do with work that is not saved. False when the operator wants to go on with it,
    /// or it could not be saved.
    bool mayLose();

    /// The filters of the file dialogs: that of the HCT-7200, then that of the HCT-7300.
    static QStringList filters();

private:
    bool saveTo(const QString& path);

    ProgrammeDocument& m_document;
    EditorDialogs& m_dialogs;
};
