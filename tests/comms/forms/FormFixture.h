#pragma once

#include "FakeDialogs.h"
#include "ModemFixture.h"
#include "ModemQuestions.h"
#include "PortNames.h"
#include "frmPortoSerie.h"

#include <QTest>

/// The communications form on a fake modem and a fake line. COM2 is the only device there is.
struct FormFixture : ModemFixture {
    explicit FormFixture(const std::function<void(MemoryRegistry&)>& fill = {})
        : names(
              registry, [](const QString&) { return QString(); }, [] { return QStringList(); })
    {
        if (fill)
            fill(registry);
        registry.values.insert(QStringLiteral("HKLM\\HARDWARE\\DEVICEMAP\\SERIALCOMM|/dev/ttyUSB7"),
                               {RegistryValue::Text, QByteArray("COM2", 5)});
        settings.LoadSettings(registry);
        link.ApplySettings();
        form = std::make_unique<frmPortoSerie>(link, control, settings, registry, names, dialogs);
    }

    void show()
    {
        form->open();
        QVERIFY(QTest::qWaitForWindowActive(form.get()));
    }
    template<typename Widget>
    Widget& find(const QString& name)
    {
        auto* found = form->findChild<Widget*>(name);
        if (!found)
            qFatal("no %s", qPrintable(name));
        return *found;
    }

    PortNames names;
    FakeDialogs dialogs;
    ModemQuestions modemQuestions{control, dialogs, globais.applicationDirectory};
    std::unique_ptr<frmPortoSerie> form;
};
