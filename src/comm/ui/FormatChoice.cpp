#include "FormatChoice.h"

#include "LineChoices.h"
#include "VisibleText.h"

#include <QGridLayout>
#include <QRadioButton>

namespace {

constexpr int kUsualFormats = 2; // in a row of their own
constexpr int kFormatColumns = 3;

} // namespace

FormatChoice::FormatChoice(QWidget* parent) : QWidget(parent), m_other(new QRadioButton(this))
{
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setColumnStretch(kFormatColumns, 1);
    for (const linechoices::Format& format : linechoices::formats()) {
        auto* button = new QRadioButton(format.caption, this);
        button->setObjectName(format.control);
        const int place = static_cast<int>(m_buttons.size()) - kUsualFormats;
        layout->addWidget(button, place < 0 ? 0 : 1 + place / kFormatColumns,
                          place < 0 ? place + kUsualFormats : place % kFormatColumns);
        m_buttons << button;
    }
    m_other->setObjectName(QStringLiteral("optOther"));
    layout->addWidget(m_other, 0, kUsualFormats);
    for (QRadioButton* button : m_buttons + QList{m_other})
        connect(button, &QRadioButton::toggled, this, &FormatChoice::changed);
}

void FormatChoice::select(const QString& chara, const QString& other)
{
    m_otherChara = other;
    m_other->setText(platform::visibleText(other));
    m_other->setVisible(!other.isEmpty());
    QRadioButton* chosen = !other.isEmpty() && chara == other ? m_other : m_buttons.first();
    for (qsizetype i = 0; i < m_buttons.size(); ++i) {
        if (linechoices::formats()[i].chara == chara)
            chosen = m_buttons[i];
    }
    chosen->setChecked(true);
}

QString FormatChoice::chara() const
{
    for (qsizetype i = 0; i < m_buttons.size(); ++i) {
        if (m_buttons[i]->isChecked())
            return linechoices::formats()[i].chara;
    }
    return m_otherChara;
}
