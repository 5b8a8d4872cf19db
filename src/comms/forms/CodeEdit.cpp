#include "CodeEdit.h"

#include "Wipe.h"

#include <QRegularExpressionValidator>

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
    keepTexts();
    for (QString& text : m_kept)
        overwriteText(text);
}

void CodeEdit::setShown(bool shown)
{
    keepTexts();
    setEchoMode(shown ? Normal : Password);
}

void CodeEdit::keepTexts()
{
    Texts current{text(), displayText()};
    for (std::size_t i = 0; i < current.size(); ++i) {
        if (m_kept[i].constData() != current[i].constData())
            overwriteText(m_kept[i]);
    }
    m_kept = std::move(current);
}

void CodeEdit::overwriteText(QString& text)
{
    // In its place, for the toolkit's share of it too. A text without capacity is a constant.
    if (text.capacity() > 0)
        overwrite(reinterpret_cast<char*>(const_cast<QChar*>(text.constData())),
                  text.size() * qsizetype(sizeof(QChar)));
}
