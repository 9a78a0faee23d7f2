#include "ItemData.h"

#include "clsLibrary.h"

#include <algorithm>

namespace {

constexpr platform::ColorRef kChangedColor = 0xFF0000; // blue

} // namespace

platform::CellType ItemData::CellType() const
{
    if (m_typeName == u"Bit")
        return platform::CellType::Button;
    if (m_typeName == u"Data")
        return platform::CellType::Edit;
    if (m_typeName == u"Combo")
        return platform::CellType::ComboBox;
    return platform::CellType::StaticText;
}

bool ItemData::showsStoredText() const
{
    return m_type == ItemType::String || (m_type == ItemType::Data && m_typeName != u"Data");
}

QString ItemData::ComboString() const
{
    return m_comboStrings.join(u'\t');
}

bool ItemData::checkMulti() const
{
    return !m_multiSection.isEmpty() || !m_inputCSection.isEmpty() || !m_inputKSection.isEmpty();
}

QString ItemData::decimalsReference() const
{
    static const QString kDot = QStringLiteral("DOT");
    return m_decimalsText.contains(kDot) ? m_decimalsText.mid(kDot.size()) : QString();
}

void ItemData::hold(const QString& storedValue)
{
    m_data = storedValue;
    m_known = true;
    m_holdsDefault = false;
}

void ItemData::markEntered()
{
    Edit = EditState::kChanged;
    m_known = true;
    m_holdsDefault = false;
}

int ItemData::ComboIdx() const
{
    return static_cast<int>(std::max<qsizetype>(m_comboDatas.indexOf(m_data), 0));
}

QString ItemData::ButtonCaption() const
{
    return m_library->toLong(m_data, 0) != 0 ? m_bitOnCaption : m_bitOffCaption;
}

ItemState ItemData::state() const
{
    return {m_data, m_known, m_holdsDefault, Edit, m_limits.currentLower, m_limits.currentUpper, cause};
}

void ItemData::restore(const ItemState& state)
{
    m_data = state.data;
    m_known = state.known;
    m_holdsDefault = state.holdsDefault;
    Edit = state.edit;
    m_limits.currentLower = state.currentLower;
    m_limits.currentUpper = state.currentUpper;
    cause = state.cause;
}

platform::ColorRef ItemData::BackColor() const
{
    const qint32 fallback = m_library->StrToColor(QStringLiteral("vbWindowBackground"), 0xFFFFFF);
    return static_cast<platform::ColorRef>(m_library->StrToColor(m_backColorName, fallback));
}

platform::ColorRef ItemData::SprForeColor() const
{
    if (Edit == EditState::kChanged)
        return kChangedColor;
    const qint32 fallback = m_library->StrToColor(QStringLiteral("vbWindowText"), 0);
    return static_cast<platform::ColorRef>(m_library->StrToColor(m_foreColorName, fallback));
}
