#include "TransferParts.h"

#include "ModelCodes.h"
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

void TransferParts::notifyWrongModel(const QString& found) const
{
    notify(modelcodes::differenceText(controller.model(), found, kx.library().translation()), MessageStyle::kCritical);
}

void TransferParts::notifyNoResponse(const QString& reason) const
{
    const QString text = tran("There was no response.");
    notify(reason.isEmpty() ? text : text + u'\n' + reason, MessageStyle::kExclamation);
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
