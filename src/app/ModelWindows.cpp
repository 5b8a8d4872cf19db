#include "ModelWindows.h"

#include "MdiForm.h"
#include "StatusBlock.h"
#include "modGlobais.h"

#include <QDialog>

ModelWindows::ModelWindows(const modGlobais& globais, Factories factories)
    : m_globais(globais),
      m_information{{factories.frmInfoHCT7200, {}}, {factories.frmInfoHCT7300, {}}},
      m_remoteControl{{factories.frmTelemandoHCT7200, {}}, {factories.frmTelemandoHCT7300, {}}},
      m_programmingFirst{factories.frmProgHCT7200, {}},
      m_programmingSecond{factories.frmProgHCT7300, {}},
      m_synchronisation{factories.frmSincronizacionReloxo, {}},
      m_firmware{factories.frmProgramPROM, {}}
{}

void ModelWindows::openInformation()
{
    show(isFirstModel() ? m_information.first : m_information.second);
}

void ModelWindows::openRemoteControl()
{
    show(isFirstModel() ? m_remoteControl.first : m_remoteControl.second);
}

void ModelWindows::openProgramming()
{
    show(isFirstModel() ? m_programmingFirst : m_programmingSecond);
}

void ModelWindows::openSynchronisation() { show(m_synchronisation); }

void ModelWindows::openFirmware() { show(m_firmware); }

void ModelWindows::closeClockWindows()
{
    for (Form* form : {&m_information.first, &m_information.second, &m_remoteControl.first,
                       &m_remoteControl.second, &m_synchronisation})
        close(*form);
}

bool ModelWindows::isFirstModel() const
{
    return StatusBlock(m_globais.GeneralData).isFirstModel();
}

void ModelWindows::show(Form& form)
{
    if (!form.open && form.make) {
        form.open = form.make();
        // A window that has unloaded still exists for a moment, but must not be shown again.
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
