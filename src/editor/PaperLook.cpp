#include "PaperLook.h"

QFont PaperLook::font(int size, bool bold)
{
    QFont font;
    font.setPixelSize(size);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

const WeekDrawing::Look& PaperLook::week()
{
    static const WeekDrawing::Look look{Qt::black, Qt::lightGray, Qt::white, false};
    return look;
}
