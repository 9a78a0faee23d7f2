#include "EditorShell.h"

bool EditorShell::writeOne(const QString& tag)
{
    m_engine.setDataToKXOne(tag);
    return wasTaken();
}

bool EditorShell::writeBlock(clsBlock& block, bool readBack)
{
    m_engine.writeBlock(block, readBack);
    return wasTaken();
}

bool EditorShell::writeBlockThenOne(clsBlock* block, const QString& tag)
{
    m_engine.writeBlockThenOne(block, tag);
    return wasTaken();
}
