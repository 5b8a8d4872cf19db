#pragma once

#include <QString>

namespace simulator {

/// A SIM card. After three wrong PINs it asks for the PUK, after three wrong PUKs it is locked for
/// ever.
class SimCard {
public:
    enum class State { Ready, WantsPin, WantsPuk, Locked };

    explicit SimCard(State state = State::Ready, const QString& pin = QStringLiteral("1234"),
                     const QString& puk = QStringLiteral("12345678"));

    State state() const { return m_state; }
    /// The modem's text for the state; empty when the card is locked.
    QString stateText() const;
    void setState(State state);
    void setPin(const QString& pin) { m_pin = pin; }
    void setPuk(const QString& puk) { m_puk = puk; }

    /// Takes what follows "AT+CPIN=": the PIN, or PUK and new PIN separated by a comma, each with
    /// or without quotation marks. Whether the card accepted it.
    bool enter(const QString& codes);

private:
    bool enterPin(const QString& pin);
    bool enterPuk(const QString& puk, const QString& newPin);
    bool countError(State next);

    static constexpr int attempts = 3;
    State m_state;
    QString m_pin;
    QString m_puk;
    int m_left = attempts;
};

} // namespace simulator
