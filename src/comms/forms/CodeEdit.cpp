#include "CodeEdit.h"

#include "Wipe.h"

#include <QApplication>
#include <QProxyStyle>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

namespace {

/// The style that the program runs in, but for the character that hides a code.
class AsteriskStyle : public QProxyStyle {
public:
    AsteriskStyle() : QProxyStyle(QApplication::style()->name()) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override
    {
        if (hint == SH_LineEdit_PasswordCharacter)
            return u'*';
        if (hint == SH_LineEdit_PasswordMaskDelay)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

} // namespace

CodeEdit::CodeEdit(int length, QWidget* parent) : QLineEdit(parent)
{
    auto* style = new AsteriskStyle;
    style->setParent(this);
    setStyle(style);
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
