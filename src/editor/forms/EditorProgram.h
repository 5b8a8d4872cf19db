#pragma once

#include "ClockModel.h"
#include "CountingDialogs.h"
#include "EditorEnvironment.h"
#include "RecentFiles.h"
#include "RecoveryFolder.h"

#include <QObject>
#include <QStringList>

#include <list>
#include <optional>

class QMenu;
class QSessionManager;
class Recovery;
class frmEditor;

/// The editor without its event loop: its windows, each with a document, the recent files, and the
/// unsaved work of a run that ended without asking.
class EditorProgram final : public QObject {
    Q_OBJECT
public:
    explicit EditorProgram(const EditorEnvironment& environment);
    ~EditorProgram() override;

    /// As soon as events run, opens a window for each file, or one with a new programme, and offers
    /// unsaved work. Without a model each file is opened as it was last, or as what it tells.
    void start(const QStringList& paths, std::optional<ClockModel> model = std::nullopt);
    /// Opens the file in a window of its own, or in `from` if that is untouched. A file that is
    /// open already is only raised.
    void open(const QString& path, ClockModel model, frmEditor* from = nullptr);

    QList<frmEditor*> windows() const;
    /// Asks about everything that is not saved, and closes all windows unless the operator refuses.
    bool quit();
    /// Leaves what is not saved for the next run: nobody may be there to answer.
    void keepUnsavedWork();
    /// At the end of the desktop session: asks where it may.
    void endSession(QSessionManager& session);

private:
    struct Open {
        frmEditor* window;
        std::unique_ptr<IntervalTimer> timer;
        std::unique_ptr<Recovery> recovery;
    };

    void openFirst(frmEditor& first, const QStringList& paths, std::optional<ClockModel> model);
    frmEditor& addWindow(ClockModel model);
    void connectWindow(frmEditor& window);
    void forget(const frmEditor& window);
    void openNew(ClockModel model);
    void openByDialog(frmEditor& from);
    /// That of the file which was opened or saved last, otherwise the user's documents.
    QString startFolder() const;
    /// The model that the operator chose for a file; asks where the file tells another one.
    std::optional<ClockModel> agreedModel(const QString& path, ClockModel chosen);
    frmEditor* windowOf(const QString& path) const;
    void noteFile(frmEditor& window);
    /// The title that the sheet of this file had last time.
    void takeTitle(frmEditor& window, const QString& path);
    void fillRecent(QMenu& menu, frmEditor& from);
    void offerUnsavedWork();
    void recover(RecoveryFolder::Abandoned abandoned);
    /// The one that shows the file of the work as it was saved, or an untouched one, or a new one.
    frmEditor& windowFor(const UnsavedWork& work);
    bool mayCloseAll();

    const EditorEnvironment m_environment;
    CountingDialogs m_dialogs;
    RecentFiles m_recent;
    std::list<Open> m_open;
};
