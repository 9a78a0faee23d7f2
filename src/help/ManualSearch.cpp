#include "ManualSearch.h"

#include "HtmlText.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr qint64 kLargestPage = 4'000'000; // bytes
constexpr qsizetype kAround = 40;          // characters of an excerpt before and behind the text
constexpr char16_t kFirstIdeographic = 0x2E80;
const QString kFirstPage = QStringLiteral("index.html");

QString folded(const QString& text)
{
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded();
}

bool isLongEnough(const QString& text)
{
    return text.size() > 1 || (!text.isEmpty() && text.front().unicode() >= kFirstIdeographic);
}

QString excerptOf(const QString& text, qsizetype at, qsizetype length)
{
    const qsizetype from = std::max<qsizetype>(at - kAround, 0);
    const qsizetype to = std::min(at + length + kAround, text.size());
    return (from > 0 ? QStringLiteral("...") : QString()) + text.mid(from, to - from).trimmed() +
           (to < text.size() ? QStringLiteral("...") : QString());
}

} // namespace

ManualSearch::ManualSearch(const QString& folder) : m_folder(folder)
{
    QStringList names = QDir(folder).entryList({QStringLiteral("*.html")}, QDir::Files, QDir::Name);
    if (names.removeOne(kFirstPage))
        names.prepend(kFirstPage);
    for (const QString& name : std::as_const(names))
        m_pages.push_back(read(folder, name));
}

ManualSearch::Page ManualSearch::read(const QString& folder, const QString& name)
{
    static const QRegularExpression head(QStringLiteral("<title>(.*?)</title>"),
                                         QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression heading(QStringLiteral("<h[1-4][^>]*\\bid=\"([^\"]+)\"[^>]*>(.*?)</h[1-4]>"),
                                            QRegularExpression::DotMatchesEverythingOption);
    Page page{name, {}, {}};
    QFile file(QDir(folder).filePath(name));
    if (file.size() > kLargestPage || !file.open(QIODevice::ReadOnly))
        return page;
    const QString html = QString::fromUtf8(file.readAll());
    page.title = htmlText(head.match(html).captured(1));
    Section section{{}, page.title, {}, {}};
    qsizetype from = std::max<qsizetype>(html.indexOf(QStringLiteral("<body")), 0);
    const auto end = [&](qsizetype to) {
        section.text = htmlText(html.mid(from, to - from));
        section.folded = folded(section.text);
        page.sections.push_back(section);
        from = to;
    };
    auto found = heading.globalMatch(html);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        end(match.capturedStart());
        section = {match.captured(1), htmlText(match.captured(2)), {}, {}};
    }
    end(html.size());
    return page;
}

std::vector<ManualSearch::Hit> ManualSearch::find(const QString& text) const
{
    const QString wanted = folded(text.simplified());
    std::vector<Hit> hits;
    if (!isLongEnough(wanted))
        return hits;
    for (const Page& page : m_pages)
        findOn(page, wanted, hits);
    std::stable_partition(hits.begin(), hits.end(),
                          [&](const Hit& hit) { return folded(hit.heading).contains(wanted); });
    if (hits.size() > kMostHits)
        hits.resize(kMostHits);
    return hits;
}

void ManualSearch::findOn(const Page& page, const QString& folded, std::vector<Hit>& hits)
{
    int before = 0;
    for (const Section& section : page.sections) {
        const qsizetype at = section.folded.indexOf(folded);
        if (at >= 0)
            hits.push_back({page.name, page.title, section.anchor, section.heading,
                            excerptOf(section.folded.size() == section.text.size() ? section.text : section.folded, at,
                                      folded.size()),
                            before});
        before += static_cast<int>(section.folded.count(folded));
    }
}
