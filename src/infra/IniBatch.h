#pragma once

#include "Context.h"

constexpr int kPutFailure = 556; // error number of a write that failed, in the error log

// Several writes to INI-syntax files that reach the disk together. End it by one of the two commits: what was collected
// is dropped otherwise. A batch within another one leaves the writing to that.
class IniBatch
{
public:
    explicit IniBatch(Context& context) : m_context(context), m_batch(context.machine.profiles) {}

    // For what a person asked to have saved. A failure says what is not on the disk and why; the error log has it too.
    platform::Result<> commit();
    // For what the program keeps on its own account: nobody but the error log hears of a failure.
    void commitLogged();

    // One line in the error log for a failure that is not there yet. number: of the operation.
    static void note(const Context& context, int number, const platform::Result<>& outcome);

private:
    Context& m_context;
    platform::ProfileStore::Batch m_batch;
};
