#pragma once

#include "Programme.h"
#include "ProgrammeProblem.h"
#include "UnsavedWork.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QUndoStack>

#include <optional>

/// A programme that is being edited, the file that it belongs to, and the steps that can be undone.
///
/// A file is replaced whole or not at all. It is not replaced without permission when values in it
/// could not be read, or when somebody else has changed it since it was opened or saved.
class ProgrammeDocument : public QObject {
    Q_OBJECT
public:
    /// A new programme, without alarms and without a file.
    explicit ProgrammeDocument(ClockModel model, QObject* parent = nullptr);
    /// Emits nothing.
    ~ProgrammeDocument() override;
    Q_DISABLE_COPY_MOVE(ProgrammeDocument)

    const Programme& programme() const { return m_state.programme; }
    ClockModel model() const { return m_state.model; }
    /// Its texts are those of EditName, without a verb: "hora del aviso 3".
    QUndoStack& undoStack() { return m_undoStack; }

    /// One step, named by what differs. It is merged with the step before it when both are about
    /// the same field and finishTyping() has not been called in between. Without a difference there
    /// is no step. Durations and modes of the HCT-7200 stay as they are.
    void edit(const Programme& after);
    /// A step of its own with this name: "pegar avisos".
    void edit(const Programme& after, const QString& name);
    /// A step, too. ModelChange tells beforehand what would be lost.
    void changeModel(ClockModel model);
    /// What is typed from now on is another step. Saving, undoing and redoing do the same.
    void finishTyping() { ++m_typing; }

    bool isModified() const { return !m_undoStack.isClean(); }
    /// Absolute; empty while there is no file.
    const QString& path() const { return m_path; }
    /// "colegio.hct"; "Sin título" while there is no file.
    QString name() const;
    /// The folder of the file; empty while there is no file.
    QString folder() const;

    struct OpenResult {
        /// Why the file could not be opened, in Spanish; empty when it was.
        QString failure;
        /// What could not be read as it is written, and what the clock cannot obey.
        QList<ProgrammeProblem> problems;

        bool isOpen() const { return failure.isEmpty(); }
    };
    /// Takes the programme of a file and forgets all steps. When the file cannot be read nothing
    /// changes.
    OpenResult open(const QString& path, ClockModel model);
    /// Takes work that was not saved and forgets all steps; the document is modified.
    void recover(const UnsavedWork& work);
    UnsavedWork unsavedWork() const;

    struct SaveResult {
        /// Misread: values of the file would be lost that could not be read. ChangedOutside: what
        /// somebody else has written would be lost. Both need permission.
        enum class Outcome { Saved, Failed, Misread, ChangedOutside };

        Outcome outcome;
        /// Why it was not saved, in Spanish; empty when it was.
        QString reason;

        bool isSaved() const { return outcome == Outcome::Saved; }
    };
    enum class Overwriting { NeedsPermission, IsAllowed };
    /// Call it only when there is a path.
    SaveResult save(Overwriting overwriting = Overwriting::NeedsPermission);
    /// Another file is replaced without further questions: the file dialog has asked.
    SaveResult saveAs(const QString& path, Overwriting overwriting = Overwriting::NeedsPermission);
    /// Whether the file holds other bytes than when it was opened or saved. A file that is gone or
    /// cannot be read counts as unchanged: nothing is lost by saving.
    bool isChangedOutside() const;

signals:
    /// After each edit, undo, redo and open: programme or model are others.
    void changed();
    void modifiedChanged(bool modified);
    /// The document has another path, or the same after it was saved or opened.
    void fileChanged();

private:
    class Step;
    struct State {
        Programme programme;
        ClockModel model;

        bool operator==(const State&) const = default;
    };

    /// The state after an edit: without days that the model does not have; that of the HCT-7200
    /// keeps durations and modes.
    State edited(const Programme& after) const;
    void push(const State& after, const QString& name, const QString& mergeKey);
    /// Forgets all steps.
    void begin(const UnsavedWork& work, bool isSaved);
    std::optional<SaveResult> objection(const QString& path) const;

    State m_state;
    QUndoStack m_undoStack;
    /// Counts up at each finishTyping().
    int m_typing = 0;

    QString m_path;
    /// See UnsavedWork.
    QByteArray m_fileHash;
    bool m_isMisread = false;
};
