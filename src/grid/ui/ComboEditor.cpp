#include "ComboEditor.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QWheelEvent>

namespace platform {

ComboEditor::ComboEditor(QWidget* parent) : QComboBox(parent)
{
    connect(this, &QComboBox::activated, this, &ComboEditor::onActivated);
}

void ComboEditor::showPopup()
{
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 2 * view()->frameWidth()); // the cell may be narrower
    QComboBox::showPopup();
    m_isPending = true;
    view()->window()->installEventFilter(this);
}

void ComboEditor::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

bool ComboEditor::eventFilter(QObject* watched, QEvent* event)
{
    // The list goes before its choice arrives: whether there is one is known a moment later.
    if (event->type() == QEvent::Hide && watched != this)
        QMetaObject::invokeMethod(this, &ComboEditor::onListHidden, Qt::QueuedConnection);
    return QComboBox::eventFilter(watched, event);
}

// A choice from the open list; cursor keys on the closed one only look at the entries.
void ComboEditor::onActivated()
{
    if (!m_isPending || view()->isVisible())
        return;
    m_isPending = false;
    m_isChosen = true;
    Q_EMIT chosen();
}

void ComboEditor::onListHidden()
{
    if (!m_isPending || view()->isVisible())
        return;
    m_isPending = false;
    if (isVisible()) // else the editor was closed with its list
        Q_EMIT dismissed();
}

} // namespace platform
