#pragma once

#include "MdiForm.h"

#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <functional>
#include <memory>

/// A form with two fields and a button. It counts how often it is asked.
class SampleForm final : public MdiForm {
public:
    explicit SampleForm(QMdiArea& area) : MdiForm(area)
    {
        setWindowTitle(QStringLiteral("Ventana"));
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(new QLineEdit);
        edit = new QLineEdit;
        auto* caption = new QLabel(QStringLiteral("&Hora:"));
        caption->setBuddy(edit);
        button = new QPushButton(QStringLiteral("&Automático"));
        layout->addWidget(caption);
        layout->addWidget(edit);
        layout->addWidget(button);
    }

    QLineEdit* edit;
    QPushButton* button;
    bool refuses = false;
    QList<CloseReason> asked;
    int unloads = 0;
    std::function<void()> whileAsking;

protected:
    bool queryUnload(CloseReason reason) override
    {
        asked.append(reason);
        if (whileAsking)
            whileAsking();
        return !refuses;
    }
    void unload() override { ++unloads; }
};

/// An MDI area of a fixed size, active and in front.
inline std::unique_ptr<QMdiArea> showArea()
{
    auto area = std::make_unique<QMdiArea>();
    area->resize(800, 600);
    area->show();
    if (!QTest::qWaitForWindowActive(area.get()))
        qFatal("the area does not become active");
    return area;
}
