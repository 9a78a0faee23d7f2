#pragma once

#include <QString>

class uclComm;

// What the communication settings need of the window that opened them.
class ComSetOwner
{
public:
    virtual ~ComSetOwner() = default;

    // The window's own link; it is closed while the settings are open.
    virtual uclComm& mainLink() = 0;

    // What the window works with now.
    virtual int slaveAddress() const = 0;
    virtual int transmissionMode() const = 0; // 0 RTU, 1 ASCII
    virtual int modelNumber() const = 0;      // catalogue number, from 1
    virtual QString currentModel() const = 0; // model string, empty before the first use

    // Whether what the window holds may be lost for what is read then; it asks its user where it has to.
    [[nodiscard]] virtual bool mayDiscard() = 0;

    // State: true sets "model and port confirmed", false "no connection".
    virtual void setConfirmed(bool confirmed) = 0;
    // The user's choice. modelPosition: in the catalogue, from 0; -1 when no entry is selected.
    virtual void takeOver(int slaveNo, int mode, int modelPosition, const QString& modelString) = 0;
    // Reads all data of the controller with what was taken over.
    virtual void startRead() = 0;
};
