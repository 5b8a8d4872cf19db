#pragma once

#include <QDialog>

#include <functional>

class QPushButton;

/// The About box: what the program is called, its version, whom to ask, and a button that starts
/// the system's own information program. Modal; shown with `open`, it deletes itself.
class frmAcerca : public QDialog {
    Q_OBJECT
public:
    /// `version` is major, minor and revision, joined by dots.
    frmAcerca(QWidget* owner, const QString& version, std::function<void()> systemInformation);

private:
    QWidget* makeTitle(const QString& version);
    QWidget* makeContact();
    QWidget* makeButtons(const std::function<void()>& systemInformation);

    QPushButton* cmdOK = nullptr;
};
