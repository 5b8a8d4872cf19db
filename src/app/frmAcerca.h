#pragma once

#include <QDialog>

#include <functional>

class QPushButton;

/// The About box: the program's name and version, whom to contact, and a button that starts the
/// system-information program. Modal. Show it with `open`; it deletes itself when closed.
class frmAcerca : public QDialog {
    Q_OBJECT
public:
    /// `version` is "major.minor.revision".
    frmAcerca(QWidget* owner, const QString& version,
              const std::function<void()>& systemInformation);

private:
    QWidget* makeTitle(const QString& version);
    QWidget* makeContact();
    QWidget* makeButtons(const std::function<void()>& systemInformation);

    QPushButton* cmdOK = nullptr;
};
