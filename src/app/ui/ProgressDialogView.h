#pragma once

#include "TransferPorts.h"

#include <QObject>
#include <memory>

class QWidget;
class frmProgbar;

// The progress dialog over the window given, made at its first use. The owner is kept, not owned.
class ProgressDialogView : public QObject, public ProgressView
{
    Q_OBJECT

public:
    explicit ProgressDialogView(QWidget& owner);
    ~ProgressDialogView() override;

    void open(int maximum, const QString& title, const QString& text, bool disableOwner, bool cancelButton) override;
    void setPosition(int position) override;
    void setText(const QString& text) override;
    void close() override;

Q_SIGNALS:
    void cancelled(int Index);

private:
    QWidget& m_owner;
    std::unique_ptr<frmProgbar> m_dialog;
};
