#pragma once

#include <QObject>

#include <functional>

class EditorDialogs;
class ProgrammeDocument;
class WallSheet;

/// Puts a document on paper, on the screen as paper, or into a PDF file.
class WallPrinting final : public QObject {
    Q_OBJECT
public:
    /// `title` gives the title of the sheet.
    WallPrinting(const ProgrammeDocument& document, EditorDialogs& dialogs,
                 const std::function<QString()>& title, QObject* parent = nullptr);

    void print();
    void preview();
    /// Asks for the name of the file.
    void savePdf();

signals:
    /// What was done, for the status bar.
    void told(const QString& text);

private:
    WallSheet sheet() const;
    /// The title; without one the name of the document without its extension.
    QString name() const;
    /// Unless it is empty.
    void tellFailure(const QString& failure);

    const ProgrammeDocument& m_document;
    EditorDialogs& m_dialogs;
    const std::function<QString()> m_title;
};
