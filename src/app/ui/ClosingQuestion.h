#pragma once

class ProgramContext;
class MessagePresenter;
class ParameterFiles;
class QWidget;
class TransferEngine;

// Whether the main window may close: asked where the options say so, before a transfer is given up, and before changes
// are lost, unless the process was asked to end. All parts are kept, not owned.
class ClosingQuestion
{
public:
    ClosingQuestion(ProgramContext& program, MessagePresenter& questions, const ParameterFiles& files,
                    const TransferEngine& engine)
        : m_program(program), m_questions(questions), m_files(files), m_engine(engine)
    {}

    [[nodiscard]] bool mayClose();
    // Closes the window without the question; one that is being asked ends with it.
    void closeUnasked(QWidget& window);

private:
    bool isWanted();

    ProgramContext& m_program;
    MessagePresenter& m_questions;
    const ParameterFiles& m_files;
    const TransferEngine& m_engine;
    bool m_asksBefore = true;
    bool m_isAsking = false;
};
