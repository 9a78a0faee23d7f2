#pragma once

#include <QString>

#include <vector>

// Finds a text on all pages of a manual: a folder of HTML files. The pages are read once, by the constructor; those
// that cannot be read are left out. Case, width of the characters and line breaks do not matter.
class ManualSearch
{
public:
    static constexpr int kMostHits = 100;

    // A section of a page that holds the text.
    struct Hit
    {
        QString page;    // bare file name
        QString title;   // of the page
        QString anchor;  // of the section; empty before the first
        QString heading; // of the section; that of the page before the first
        QString excerpt; // around the text
        int before = 0;  // how often the text stands on the page before it
    };

    ManualSearch() = default;
    explicit ManualSearch(const QString& folder); // machine path
    QString folder() const { return m_folder; }

    // Sections whose heading holds the text come first; then the contents page before the others, in the order of their
    // names. Empty for a text of less than two characters, or one Chinese or Japanese one.
    std::vector<Hit> find(const QString& text) const;

private:
    struct Section
    {
        QString anchor;
        QString heading;
        QString text; // the heading included
        QString folded;
    };
    struct Page
    {
        QString name;
        QString title;
        std::vector<Section> sections;
    };

    static Page read(const QString& folder, const QString& name);
    static void findOn(const Page& page, const QString& folded, std::vector<Hit>& hits);

    QString m_folder;
    std::vector<Page> m_pages;
};
