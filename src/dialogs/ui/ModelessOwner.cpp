#include "ModelessOwner.h"

ModelessOwner::~ModelessOwner()
{
    release();
}

void ModelessOwner::attach(QWidget& dialog, QWidget* owner, bool disable)
{
    release();
    if (dialog.parentWidget() != owner)
        dialog.setParent(owner, dialog.windowFlags());
    m_owner = owner;
    m_disabled = disable;
    if (owner != nullptr)
        owner->setEnabled(!disable);
    dialog.setEnabled(true); // it is a child of the owner, and would be disabled with it
}

void ModelessOwner::release()
{
    if (m_owner && m_disabled)
        m_owner->setEnabled(true);
    m_disabled = false;
}
