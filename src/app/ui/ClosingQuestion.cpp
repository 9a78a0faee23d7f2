#include "ClosingQuestion.h"

#include "MessagePresenter.h"
#include "ParameterFiles.h"
#include "ProgramContext.h"

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
    const QString question = m_program.library().tranStr(QStringLiteral("Quit?"));
    const QScopedValueRollback<bool> asking(m_isAsking, true);
    const bool isWanted = !m_program.settings().m_bViewEndConf ||
                          m_questions.showMessage(question, MessageStyle::kYesNoExclamation) != MessageResult::kNo;
    const bool mayDiscard = m_asksBefore && isWanted && m_files.mayDiscard();
    return mayDiscard || !m_asksBefore; // while it was asked, somebody may have asked the process to end
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
