#include "ProgressDialogView.h"

#include "frmProgbar.h"

#include <utility>

ProgressDialogView::ProgressDialogView(QWidget& owner, clsLibrary& library) : m_owner(owner), m_library(library) {}

ProgressDialogView::~ProgressDialogView() = default;

void ProgressDialogView::open(int maximum, const QString& title, const QString& text, bool disableOwner,
                              bool cancelButton)
{
    if (m_instead != nullptr) {
        m_shown = m_instead;
        m_owner.setEnabled(!disableOwner);
        m_shown->open(maximum, title, text, disableOwner, cancelButton);
        return;
    }
    if (m_dialog == nullptr) {
        m_dialog = std::make_unique<frmProgbar>();
        m_dialog->setLib(&m_library);
        connect(m_dialog.get(), &frmProgbar::ProgCancel, this, &ProgressDialogView::cancelled);
    }
    m_dialog->showModeless(&m_owner, maximum, title, text, 0, disableOwner, cancelButton);
}

void ProgressDialogView::setPosition(int position)
{
    if (m_shown != nullptr)
        m_shown->setPosition(position);
    else if (m_dialog != nullptr)
        m_dialog->setPos(position);
}

void ProgressDialogView::setText(const QString& text)
{
    if (m_shown != nullptr)
        m_shown->setText(text);
    else if (m_dialog != nullptr)
        m_dialog->setText(text);
}

void ProgressDialogView::close()
{
    if (m_shown != nullptr) {
        m_owner.setEnabled(true);
        std::exchange(m_shown, nullptr)->close();
        return;
    }
    if (m_dialog != nullptr)
        m_dialog->unloadForm();
}
