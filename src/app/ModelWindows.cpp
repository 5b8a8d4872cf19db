#include "ModelWindows.h"

#include "MdiForm.h"
#include "StatusBlock.h"
#include "modGlobais.h"

#include <QDialog>

ModelWindows::ModelWindows(const modGlobais& globais, Factories factories)
    : m_globais(globais),
      m_information{{factories.frmInfoHCT7200, {}}, {factories.frmInfoHCT7300, {}}},
      m_remoteControl{{factories.frmTelemandoHCT7200, {}}, {factories.frmTelemandoHCT7300, {}}},
      m_programmingHct7200{factories.frmProgHCT7200, {}},
      m_programmingHct7300{factories.frmProgHCT7300, {}},
      m_synchronisation{factories.frmSincronizacionReloxo, {}},
      m_firmware{factories.frmProgramPROM, {}}
{}

void ModelWindows::openInformation()
{
    show(isHct7200() ? m_information.hct7200 : m_information.hct7300);
}

void ModelWindows::openRemoteControl()
{
    show(isHct7200() ? m_remoteControl.hct7200 : m_remoteControl.hct7300);
}

void ModelWindows::openProgramming()
{
    show(isHct7200() ? m_programmingHct7200 : m_programmingHct7300);
}

void ModelWindows::openSynchronisation() { show(m_synchronisation); }

void ModelWindows::openFirmware() { show(m_firmware); }

void ModelWindows::closeClockWindows()
{
    for (Form* form : {&m_information.hct7200, &m_information.hct7300, &m_remoteControl.hct7200,
                       &m_remoteControl.hct7300, &m_synchronisation})
        close(*form);
}

bool ModelWindows::isHct7200() const
{
    return StatusBlock(m_globais.GeneralData).model() == ClockModel::Hct7200;
}

void ModelWindows::show(Form& form)
{
    if (!form.open && form.make) {
        form.open = form.make();
        // A window that has unloaded is deleted later, and must not be shown again.
        connect(form.open, &MdiForm::unloaded, this, [&form] { form.open.clear(); });
    }
    if (form.open)
        form.open->showForm();
}

void ModelWindows::show(Dialog& dialog)
{
    if (!dialog.open && dialog.make)
        dialog.open = dialog.make();
    if (dialog.open)
        dialog.open->open();
}

void ModelWindows::close(Form& form)
{
    if (form.open)
        form.open->closeWindow(MdiForm::CloseReason::Code);
}
