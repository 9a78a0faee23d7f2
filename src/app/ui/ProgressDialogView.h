#pragma once

#include "ProgressView.h"

#include <QObject>
#include <memory>

class QWidget;
class clsLibrary;
class frmProgbar;

// The progress dialog over the window given, made at its first use. Owner and library are
// kept, not owned.
class ProgressDialogView : public QObject, public ProgressView
{
    Q_OBJECT

public:
    ProgressDialogView(QWidget& owner, clsLibrary& library);
    ~ProgressDialogView() override;

    // Another view that shows what is begun from now on; null: the dialog.
    void setInstead(ProgressView* view) { m_instead = view; }

    void open(int maximum, const QString& title, const QString& text, bool disableOwner, bool cancelButton) override;
    void setPosition(int position) override;
    void setText(const QString& text) override;
    void close() override;

Q_SIGNALS:
    void cancelled(int Index);

private:
    QWidget& m_owner;
    clsLibrary& m_library;
    std::unique_ptr<frmProgbar> m_dialog;
    ProgressView* m_instead = nullptr;
    ProgressView* m_shown = nullptr; // the other view, while it shows something
};
