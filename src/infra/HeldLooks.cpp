#include "HeldLooks.h"

#include <utility>

void HeldLooks::add(LogReader::Look look)
{
    m_lines += static_cast<int>(look.entries.size());
    m_looks.push_back(std::move(look));
    while (m_lines > m_mostLines && m_looks.size() > 1) {
        m_lines -= static_cast<int>(m_looks.front().entries.size());
        m_looks.pop_front();
        m_looks.front().lost = true;
    }
}

std::deque<LogReader::Look> HeldLooks::take()
{
    m_lines = 0;
    return std::exchange(m_looks, {});
}
