#pragma once

#include <QByteArray>
#include <QDialog>

class CodeEdit;
class QCheckBox;
class QDialogButtonBox;
class QGroupBox;
class QLabel;
class QPushButton;

/// Asks for the PIN of the SIM card or, to unblock the card, for its PUK and a new PIN. It checks
/// only their form: digits, four and eight of them.
class frmPINPUK : public QDialog {
    Q_OBJECT
    Q_PROPERTY(bool Cancelado READ Cancelado NOTIFY accepted)
public:
    explicit frmPINPUK(QWidget* parent = nullptr);

    /// False only once the dialog was closed with Aceptar.
    bool Cancelado() const { return m_cancelled; }
    /// The PIN, or the new PIN, and the PUK (empty when not used). The caller overwrites them.
    QByteArray pin() const;
    QByteArray puk() const;

    void accept() override;

protected:
    bool event(QEvent* event) override;

private:
    QGroupBox* makeCodes();
    QDialogButtonBox* makeButtons();
    void choosePuk(bool wanted);
    void showCodes(bool clear);
    void validate();

    QLabel* lblPIN;
    CodeEdit* txtPIN;
    QLabel* lblPUK;
    CodeEdit* txtPUK;
    QCheckBox* chkPUK;
    QCheckBox* chkVerCodigos;
    QPushButton* cmdAceptar;
    QPushButton* cmdCancelar;
    bool m_cancelled = true;
};
