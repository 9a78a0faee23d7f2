#include "ClosingQuestion.h"

#include "MessagePresenter.h"
#include "ParameterFiles.h"
#include "ProgramContext.h"
#include "TransferEngine.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QWidget>

namespace {

void endQuestions()
{
    while (QWidget* question = QApplication::activeModalWidget()) {
        if (!question->close())
            return;
    }
}

} // namespace

bool ClosingQuestion::mayClose()
{
    if (!m_asksBefore)
        return true;
    const QScopedValueRollback<bool> asking(m_isAsking, true);
    const bool mayDiscard = isWanted() && m_asksBefore && m_files.mayDiscard();
    return mayDiscard || !m_asksBefore; // while it was asked, somebody may have asked the process to end
}

// A transfer goes on when it has been answered.
bool ClosingQuestion::isWanted()
{
    const clsLibrary& library = m_program.library();
    if (m_program.settings().m_bViewEndConf &&
        m_questions.showMessage(library.tranStr(QStringLiteral("Quit?")), MessageStyle::kYesNoExclamation) ==
            MessageResult::kNo)
        return false;
    return !m_asksBefore || !m_engine.isBusy() ||
           m_questions.showMessage(
               library.tranStr(QStringLiteral("A transfer with the controller is running. Give it up and quit?")),
               MessageStyle::kYesNoExclamation + MessageStyle::kSecondIsDefault) == MessageResult::kYes;
}

// A window that is being closed cannot be closed again: the question whether to ends, and with it the closing goes on.
void ClosingQuestion::closeUnasked(QWidget& window)
{
    m_asksBefore = false;
    if (m_isAsking)
        endQuestions();
    else
        window.close();
}
