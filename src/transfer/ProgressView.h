#pragma once

#include <QString>

// Shows how far a transfer has come. The window, the command line and the tests each have their own.
class ProgressView
{
public:
    virtual ~ProgressView() = default;
    virtual void open(int maximum, const QString& title, const QString& text, bool disableOwner, bool cancelButton) = 0;
    virtual void setPosition(int position) = 0;
    virtual void setText(const QString& text) = 0;
    virtual void close() = 0;
};
