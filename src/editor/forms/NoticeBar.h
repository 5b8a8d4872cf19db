#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A notice above the pages, with one thing that can be done about it. It asks nothing and waits
/// for nobody.
class NoticeBar final : public QFrame {
    Q_OBJECT
public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Takes the place of the notice shown before.
    void showNotice(const QString& text, const QString& action, const std::function<void()>& act);

private:
    QLabel* m_text;
    QPushButton* m_action;
    std::function<void()> m_act;
};
