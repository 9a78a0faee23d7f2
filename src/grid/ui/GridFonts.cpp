#include "GridFonts.h"

#include "Fonts.h"

#include <QApplication>
#include <QFontInfo>

#include <algorithm>

namespace platform {

double pixelsPerPoint()
{
    return 96.0 / 72.0; // the desktop scales its own pixels
}

GridFonts::Face::Face(const QFont& theFont) : font(theFont), metrics(theFont)
{
    m_advances.fill(-1);
}

double GridFonts::Face::width(const QString& text) const
{
    double sum = 0;
    for (const QChar c : text) {
        if (c.unicode() >= kNarrow)
            return metrics.horizontalAdvance(text);
        float& advance = m_advances[c.unicode()];
        if (advance < 0)
            advance = static_cast<float>(metrics.horizontalAdvance(c));
        sum += static_cast<double>(advance);
    }
    return sum;
}

const GridFonts::Face& GridFonts::face(const CellFont& font)
{
    if (m_base != QApplication::font()) {
        m_base = QApplication::font();
        m_faces.clear();
    }
    for (const auto& [known, face] : m_faces) {
        if (known == font)
            return *face;
    }
    QFont named = namedFont(font.face, font.pointSize, font.bold);
    named.setHintingPreference(QFont::PreferVerticalHinting); // texts are as wide as their size says, at every zoom
    if (m_zoom != 1)
        named.setPointSizeF(QFontInfo(named).pointSizeF() * m_zoom);
    return *m_faces.emplace_back(font, std::make_unique<Face>(named)).second;
}

void GridFonts::setZoom(double factor)
{
    m_zoom = factor;
    m_faces.clear();
}

int GridFonts::scaled(int pixels) const
{
    return std::max(qRound(pixels * m_zoom), 1);
}

} // namespace platform
