#pragma once

#include "CellEditorShell.h"
#include "TransferEngine.h"

#include <functional>

// What the cell editor has around it in the program: the transfers, and the windows of the selection tables.
class EditorShell : public CellEditorShell
{
public:
    using Select = std::function<void(clsData& item, const QString& section)>;

    EditorShell(TransferEngine& engine, const ControllerState& controller, Select select)
        : m_engine(engine), m_controller(controller), m_select(std::move(select))
    {}

    MainState state() const override { return m_controller.state(); }
    bool isBusy() const override { return m_engine.isBusy(); }
    bool writeOne(const QString& tag) override;
    bool writeBlock(clsBlock& block, bool readBack) override;
    bool writeBlockThenOne(clsBlock* block, const QString& tag) override;
    void openMultiSelect(clsData& item, const QString& section) override { m_select(item, section); }

private:
    bool wasTaken() const { return m_engine.lastWrite().accepted > 0; }

    TransferEngine& m_engine;
    const ControllerState& m_controller;
    Select m_select;
};
