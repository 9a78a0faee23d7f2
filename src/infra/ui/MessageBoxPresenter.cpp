#include "MessageBoxPresenter.h"

#include "frmMessageBox.h"

#include <QApplication>

MessageBoxPresenter::MessageBoxPresenter(clsLibrary& library, QWidget* owner) : m_library(library), m_owner(owner) {}

MessageBoxPresenter::~MessageBoxPresenter() = default;

int MessageBoxPresenter::present(const Message& message)
{
    if (m_box == nullptr)
        m_box = std::make_unique<frmMessageBox>(m_library);
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget* owner = dialog != nullptr ? dialog : m_owner;
    const auto ask = [&](frmMessageBox& box) { return box.MsgBox(message, owner); };
    if (!m_box->isVisible())
        return ask(*m_box);
    frmMessageBox second(m_library); // an event brought up another message while the box waits
    return ask(second);
}
