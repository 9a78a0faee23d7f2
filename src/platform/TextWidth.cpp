#include "TextWidth.h"

#include <QList>

#include <algorithm>

namespace platform {

namespace {

struct CodeRange
{
    char32_t first;
    char32_t last;
};

// Characters of East Asian width W and F (Unicode Standard Annex 11), by block.
constexpr CodeRange kFullWidth[] = {{0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0x4DBF},  {0x4E00, 0xA4CF},
                                    {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},  {0xFF01, 0xFF60},
                                    {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x20000, 0x3FFFD}};

int characterWidth(char32_t code)
{
    const QChar::Category category = QChar::category(code);
    if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing)
        return 0;
    const bool full = std::any_of(std::begin(kFullWidth), std::end(kFullWidth),
                                  [code](const CodeRange& range) { return code >= range.first && code <= range.last; });
    return full ? 2 : 1;
}

} // namespace

int displayWidth(const QString& text)
{
    int width = 0;
    for (const uint code : text.toUcs4())
        width += characterWidth(code);
    return width;
}

} // namespace platform
