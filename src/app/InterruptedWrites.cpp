#include "InterruptedWrites.h"

#include "Journal.h"
#include "MessagePresenter.h"
#include "ProgramContext.h"

void tellInterruptedWrites(ProgramContext& program, MessagePresenter& questions)
{
    const Journal journal(program.context());
    const QString text = program.library().tranStr(
        QStringLiteral("A write was interrupted at %1 (%2, %3). Read to see what the controller holds."));
    for (const JournalEntry& entry : journal.interrupted()) {
        questions.showMessage(
            text.arg(entry.begunAt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), entry.cause, entry.device),
            MessageStyle::kExclamation);
        const platform::Result<> noted = journal.noteInterrupted(entry.id);
        if (!noted.ok())
            program.errorLog().LogWrite(noted.error());
    }
}
