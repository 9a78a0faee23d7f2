#pragma once

#include "GridModel.h"

#include <QFont>
#include <QFontMetricsF>

#include <array>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

// The fonts of a grid and the sizes of its texts: fonts are few and texts many, so each font is looked up once.
// Everything is forgotten when the application's font changes.
class GridFonts
{
public:
    struct Face
    {
        explicit Face(const QFont& theFont);
        double width(const QString& text) const; // pixels; narrow texts without a look at the font for each

        QFont font;
        QFontMetricsF metrics;

    private:
        static constexpr int kNarrow = 256;
        mutable std::array<float, kNarrow> m_advances; // of Latin characters; negative: not asked yet
    };

    const Face& face(const CellFont& font);
    // All of them larger or smaller; 1 at first.
    void setZoom(double factor);
    double zoom() const { return m_zoom; }
    int scaled(int pixels) const; // at least 1

private:
    std::vector<std::pair<CellFont, std::unique_ptr<const Face>>> m_faces; // a handful
    QFont m_base;
    double m_zoom = 1;
};

double pixelsPerPoint(); // 1/72 inch

} // namespace platform
