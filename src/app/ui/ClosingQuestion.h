#pragma once

class ProgramContext;
class MessagePresenter;
class ParameterFiles;
class QWidget;

// Whether the main window may close: asked where the options say so, and before changes are lost, unless the process
// was asked to end. All parts are kept, not owned.
class ClosingQuestion
{
public:
    ClosingQuestion(ProgramContext& program, MessagePresenter& questions, const ParameterFiles& files)
        : m_program(program), m_questions(questions), m_files(files)
    {}

    [[nodiscard]] bool mayClose();
    // Closes the window without the question; one that is being asked ends with it.
    void closeUnasked(QWidget& window);

private:
    ProgramContext& m_program;
    MessagePresenter& m_questions;
    const ParameterFiles& m_files;
    bool m_asksBefore = true;
    bool m_isAsking = false;
};
