#include "CodeEdit.h"

#include "Wipe.h"

#include <QRegularExpressionValidator>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

CodeEdit::CodeEdit(int length, QWidget* parent) : QLineEdit(parent)
{
    // 42 is the asterisk.
    setStyleSheet(u"lineedit-password-character: 42; lineedit-password-mask-delay: 0"_s);
    setMaxLength(length);
    setValidator(new QRegularExpressionValidator(QRegularExpression(u"[0-9]*"_s), this));
    setInputMethodHints(Qt::ImhDigitsOnly | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText);
    connect(this, &QLineEdit::textChanged, this, &CodeEdit::keepTexts);
}

CodeEdit::~CodeEdit()
{
    const QSignalBlocker nobodyIsTold(this);
    forget();
}

void CodeEdit::setShown(bool shown)
{
    setEchoMode(shown ? Normal : Password);
    keepTexts();
}

void CodeEdit::forget()
{
    setText(QString());
    keepTexts();
}

void CodeEdit::keepTexts()
{
    for (const QString& current : {text(), displayText()}) {
        const bool isKept = std::any_of(m_kept.cbegin(), m_kept.cend(), [&](const QString& kept) {
            return kept.constData() == current.constData();
        });
        // A text without capacity is a constant.
        if (!isKept && current.capacity() > 0)
            m_kept.push_back(current);
    }
    std::erase_if(m_kept, [](QString& kept) {
        // The toolkit holds the present ones.
        if (!kept.isDetached())
            return false;
        overwrite(reinterpret_cast<char*>(kept.data()), kept.size() * qsizetype(sizeof(QChar)));
        return true;
    });
}
