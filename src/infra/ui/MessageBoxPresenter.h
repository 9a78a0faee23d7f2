#pragma once

#include "MessagePresenter.h"

#include <memory>

class QWidget;
class clsLibrary;
class frmMessageBox;

// Questions and notices in the program's message box, over the dialog that is open, else over the window given. The box
// is made at the first message and serves the whole process. Library and window are kept, not owned.
class MessageBoxPresenter : public MessagePresenter
{
public:
    MessageBoxPresenter(clsLibrary& library, QWidget* owner);
    ~MessageBoxPresenter() override;

protected:
    int present(const Message& message) override;

private:
    clsLibrary& m_library;
    QWidget* m_owner;
    std::unique_ptr<frmMessageBox> m_box;
};
