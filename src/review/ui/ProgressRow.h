#pragma once

#include "ProgressView.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class clsLibrary;

// The progress of a transfer as a row of a window, with a button that stops it; hidden while there is none. The library
// is kept by reference.
class ProgressRow : public QWidget, public ProgressView
{
    Q_OBJECT

public:
    explicit ProgressRow(const clsLibrary& library, QWidget* parent = nullptr);

    QPushButton* stopButton() const { return m_stop; }
    bool isBusy() const { return m_isBusy; }

    void open(int maximum, const QString& title, const QString& text, bool disableOwner, bool cancelButton) override;
    void setPosition(int position) override;
    void setText(const QString& text) override;
    void close() override;

Q_SIGNALS:
    void busyChanged();

private:
    const clsLibrary& m_library;
    bool m_isBusy = false;
    QProgressBar* m_bar;
    QLabel* m_text;
    QPushButton* m_stop;
};
