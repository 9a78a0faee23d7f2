#include "TransferParts.h"

#include "clsLibrary.h"

const char* const TransferParts::kProgressText = "It is forwarding it. Please wait for a while.";

QString TransferParts::tran(const char* english) const
{
    return kx.library().tranStr(QString::fromLatin1(english));
}

bool TransferParts::confirmed(bool isAsked, const char* question) const
{
    return !isAsked || questions.showMessage(tran(question), MessageStyle::kYesNoExclamation) != MessageResult::kNo;
}

void TransferParts::notifyWrongModel() const
{
    notify(tran("Model number is different."), MessageStyle::kCritical);
}

void TransferParts::begin(int steps) const
{
    channel.begin(controller.slaveAddress(), controller.transmissionMode());
    progress.open(steps, QStringLiteral("Sending..."), QString::fromLatin1(kProgressText), true, true);
}

QString TransferParts::entryName(const clsKXAdr& image, const QString& command, const QString& address)
{
    return QStringLiteral("%1: %2 %3").arg(image.Section(), command, address);
}
