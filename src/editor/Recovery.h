#pragma once

#include <QLockFile>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>

class IntervalTimer;
class ProgrammeDocument;

/// Keeps what is not saved of a document in a file of its own, for the case that the program or the
/// machine ends without asking. It is written after an edit, at once or 2 seconds after it was
/// written last, again and again while that fails, and removed when the document has nothing
/// unsaved or this object ends.
class Recovery : public QObject {
    Q_OBJECT
public:
    static constexpr int intervalMilliseconds = 2000;

    /// Follows the document from now on. `folder` is made when it is needed; see RecoveryFolder.
    Recovery(ProgrammeDocument& document, const QString& folder, IntervalTimer& timer,
             QObject* parent = nullptr);
    ~Recovery() override;
    Q_DISABLE_COPY_MOVE(Recovery)

    /// Writes what is not written yet. False when it could not be written.
    bool writeNow();
    /// The same, and leaves the file when this object ends, unless there is another edit before.
    void keep();

signals:
    /// The file could not be written, for the first time since it last could.
    void failed();

private:
    void noteChange();
    void takeTick();
    void write();
    bool writeFile();
    void remove();

    ProgrammeDocument& m_document;
    const QString m_folder;
    /// Without the extension.
    const QString m_path;
    IntervalTimer& m_timer;
    /// Tells other programs that the owner of the file is alive.
    std::optional<QLockFile> m_lock;
    bool m_isPending = false;
    bool m_isKept = false;
    bool m_hasFailed = false;
};
