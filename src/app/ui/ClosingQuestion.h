#pragma once

class ProgramContext;
class MessagePresenter;
class QWidget;

// Whether the main window may close: asked where the options say so, unless the process was asked to end. All parts are
// kept, not owned.
class ClosingQuestion
{
public:
    ClosingQuestion(ProgramContext& program, MessagePresenter& questions) : m_program(program), m_questions(questions)
    {}

    [[nodiscard]] bool mayClose();
    // Closes the window without the question; one that is being asked ends with it.
    void closeUnasked(QWidget& window);

private:
    ProgramContext& m_program;
    MessagePresenter& m_questions;
    bool m_asksBefore = true;
    bool m_isAsking = false;
};
