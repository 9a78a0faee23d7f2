#include "PortField.h"

#include "VisibleText.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalBlocker>

namespace {

constexpr int kPortCharacters = 40; // a device and the beginning of its description

}

PortField::PortField(ComSetSession& session, QWidget* parent) : QComboBox(parent), m_session(session)
{
    // A long description of an adapter must not widen the dialog.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kPortCharacters);
    // A name may be typed; the list stays what it is, and nothing is put behind what somebody types.
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { m_lost = {}; });
}

void PortField::fill(const PortChoice& choice)
{
    clear();
    m_shown = m_session.ports().list();
    for (const platform::ComPort& port : m_shown)
        addChoice(m_session.ports().text(port),
                  port.number == choice.number ? choice : PortChoice{port.number, port.identity(), QString()});
    for (const QString& name : m_session.recentPorts())
        addChoice(name, {0, QString(), name});
    select(choice);
}

void PortField::addChoice(const QString& text, const PortChoice& choice)
{
    addItem(platform::visibleText(text), QVariant::fromValue(choice));
}

void PortField::select(const PortChoice& choice)
{
    int entry = -1;
    for (int i = 0; i < count() && choice.number > 0 && entry < 0; ++i) {
        if (itemData(i).value<PortChoice>().number == choice.number)
            entry = i;
    }
    setCurrentIndex(entry);
    if (entry < 0)
        setEditText(platform::visibleText(choice.name));
    lineEdit()->setCursorPosition(0); // a long text is seen from its beginning
}

// An entry of the list stands for what it was made from, whatever is shown of it.
PortChoice PortField::choice() const
{
    const QString text = currentText();
    const int entry = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (entry >= 0)
        return itemData(entry).value<PortChoice>();
    return text.isEmpty() ? m_lost : PortChoice::of(text);
}

void PortField::look()
{
    if (view()->isVisible())
        return;
    const QString text = currentText();
    const int cursor = lineEdit()->cursorPosition();
    const PortChoice chosen = choice();
    const bool isTyped = !text.isEmpty() && findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0;
    PortChoice port = isTyped ? PortChoice() : chosen;
    m_session.lookAtPorts(port);
    if (m_session.ports().list() == m_shown)
        return;
    {
        const QSignalBlocker blocker(this);
        fill(port);
        if (isTyped || !chosen.name.isEmpty()) {
            setEditText(text);
            lineEdit()->setCursorPosition(cursor);
        }
    }
    m_lost = port.number == 0 ? port : PortChoice();
    Q_EMIT currentTextChanged(currentText());
}
