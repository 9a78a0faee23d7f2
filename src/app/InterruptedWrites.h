#pragma once

class MessagePresenter;
class ProgramContext;

// Tells of writes that a program began and nobody ended, such as after a power cut; each is told once.
void tellInterruptedWrites(ProgramContext& program, MessagePresenter& questions);
