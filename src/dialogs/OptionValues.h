#pragma once

#include "LanguageChoice.h"
#include "Result.h"

#include <QString>

#include <array>

class clsCfg;
class clsLibrary;

// The forced font as the font dialog shows it and returns it.
struct FontRecord
{
    QString face;
    int tenthsOfPoint = 0;
    int charSet = 0; // 0 to 255
    int height = 0;  // pixels at 96 dpi, negative for the height of the characters; 0: by the size
    int width = 0;   // 0: the face's own

    bool operator==(const FontRecord&) const = default;
};

// The options as the dialog edits them: load, change, store. Nothing reaches the settings before store.
// Library and settings are kept by reference.
class OptionValues
{
public:
    static constexpr int kChecks = 12;

    OptionValues(clsLibrary& library, clsCfg& settings) : m_library(library), m_settings(settings) {}

    void load();

    // The check boxes by their index, 0 to 11.
    bool isChecked(int index) const { return m_checks.at(static_cast<size_t>(index)); }
    void setChecked(int index, bool on) { m_checks.at(static_cast<size_t>(index)) = on; }

    QStringList languages() const { return m_languages.texts(); }
    int language() const { return m_language; } // list position; -1: none selected
    void setLanguage(int position) { m_language = position; }

    const FontRecord& font() const { return m_font; }
    void setFont(const FontRecord& font) { m_font = font; }
    QString fontText() const; // "System:9pt"

    // Whether the window has to be translated and its model loaded anew for them, once they are stored.
    bool changeDesign() const;
    // Writes everything into the settings and their file. A failure says why the options hold for this run only.
    platform::Result<> store();

    // Returns the new text; sets changed when it differs from the old one, and never resets it.
    static QString chkData(bool& changed, const QString& oldText, const QString& newText);

private:
    void storeFont();

    clsLibrary& m_library;
    clsCfg& m_settings;
    LanguageChoice m_languages;
    int m_language = -1;
    std::array<bool, kChecks> m_checks{};
    FontRecord m_font;
    FontRecord m_loadedFont;
};
