#pragma once

#include "ComSetOwner.h"
#include "uclComm.h"

#include <QList>
#include <QStringList>

// A main window with a link of its own that keeps what it is told.
class RecordingOwner : public ComSetOwner
{
public:
    explicit RecordingOwner(uclComm& link) : m_link(link) {}
    uclComm& mainLink() override { return m_link; }
    int slaveAddress() const override { return slave; }
    int transmissionMode() const override { return mode; }
    int modelNumber() const override { return number; }
    QString currentModel() const override { return model; }
    void setConfirmed(bool confirmed) override { states << (confirmed ? 1 : 0); }
    void takeOver(int slaveNo, int newMode, int modelPosition, const QString& modelString) override
    {
        calls << QStringLiteral("take %1,%2,%3,%4").arg(slaveNo).arg(newMode).arg(modelPosition).arg(modelString);
    }
    bool mayDiscard() override { return discards; }
    void startRead() override { calls << QStringLiteral("read, link %1").arg(m_link.State()); }

    bool discards = true;
    int slave = 7;
    int mode = 0;
    int number = 2;
    QString model = QStringLiteral("KX41300000-10A");
    QList<int> states;
    QStringList calls;

private:
    uclComm& m_link;
};
