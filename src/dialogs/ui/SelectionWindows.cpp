#include "SelectionWindows.h"

#include <QEventLoop>

SelectionWindows::~SelectionWindows()
{
    for (const auto& window : std::as_const(m_windows))
        delete window;
}

void SelectionWindows::Logs(Log& objErrLog, Log& objTrcLog)
{
    m_errorLog = objErrLog;
    m_traceLog = objTrcLog;
}

frmMultiSelect* SelectionWindows::open(const SelectedItem& item, const QString& table, QWidget* frmOwner, bool bDisable)
{
    QPointer<frmMultiSelect>& window = m_windows[table.toLower()]; // section names have no case
    if (window.isNull())
        window = new frmMultiSelect(m_library, m_operations, table, frmOwner);
    window->Logs(m_errorLog, m_traceLog);
    return window->showModeless(item, frmOwner, bDisable) ? window.data() : nullptr;
}

void SelectionWindows::choose(const SelectedItem& item, const QString& table, QWidget* frmOwner)
{
    const frmMultiSelect* window = open(item, table, frmOwner, true);
    if (window == nullptr)
        return;
    QEventLoop untilClosed;
    QObject::connect(window, &QDialog::finished, &untilClosed, &QEventLoop::quit);
    QObject::connect(window, &QObject::destroyed, &untilClosed, &QEventLoop::quit);
    untilClosed.exec();
}

void SelectionWindows::closeAll()
{
    for (const auto& window : std::as_const(m_windows)) {
        if (!window.isNull())
            window->reject();
    }
}
