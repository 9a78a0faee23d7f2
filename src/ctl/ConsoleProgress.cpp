#include "ConsoleProgress.h"

#include "VisibleText.h"

namespace {

constexpr char kWipeLine[] = "\r\033[K"; // carriage return, erase to the end of the line
constexpr int kMaxTextLength = 70;

} // namespace

void ConsoleProgress::open(int maximum, const QString&, const QString& text, bool, bool)
{
    m_maximum = maximum;
    m_position = 0;
    setText(text);
}

void ConsoleProgress::setPosition(int position)
{
    m_position = position;
    draw();
}

void ConsoleProgress::setText(const QString& text)
{
    m_text = platform::visibleText(text.simplified()).left(kMaxTextLength);
    draw();
}

void ConsoleProgress::close()
{
    if (m_shown)
        m_terminal << kWipeLine << Qt::flush;
}

void ConsoleProgress::draw()
{
    if (m_shown)
        m_terminal << kWipeLine << m_position << '/' << m_maximum << ' ' << m_text << Qt::flush;
}
