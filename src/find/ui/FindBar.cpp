#include "FindBar.h"

#include "VisibleText.h"
#include "clsKX.h"
#include "clsLibrary.h"
#include "vaSpread.h"

#include <QComboBox>
#include <QCompleter>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QStringListModel>
#include <QStyle>
#include <QToolButton>

using platform::CellPlace;
using platform::vaSpread;

namespace {

// In the order of SearchScope.
constexpr const char* kScopes[] = {"ReviewAll", "FindChanged", "ReviewFailed", "FindNotRead"};
constexpr int kTextChars = 8; // the least room of a field

} // namespace

FindBar::FindBar(const clsKX& kx, vaSpread& sheet, QWidget* parent)
    : QWidget(parent), m_kx(kx), m_sheet(sheet), m_search(kx), m_caption(new QLabel(this)), m_text(new QLineEdit(this)),
      m_scope(new QComboBox(this)), m_previous(new QToolButton(this)), m_next(new QToolButton(this)),
      m_count(new QLabel(this)), m_tagCaption(new QLabel(this)), m_tag(new QLineEdit(this)),
      m_close(new QToolButton(this)), m_tags(new QStringListModel(this))
{
    setupParts();
    connectParts();
    hide(); // first: what is not seen reads no language files
    translate();
}

void FindBar::setupParts()
{
    setObjectName(QStringLiteral("findBar"));
    m_text->setObjectName(QStringLiteral("findText"));
    m_scope->setObjectName(QStringLiteral("findScope"));
    m_count->setObjectName(QStringLiteral("findCount"));
    m_tag->setObjectName(QStringLiteral("findTag"));
    m_text->setClearButtonEnabled(true);
    for (QLineEdit* field : {m_text, m_tag})
        field->setMinimumWidth(fontMetrics().averageCharWidth() * kTextChars);
    m_caption->setBuddy(m_text);
    m_tagCaption->setBuddy(m_tag);
    for (const char* scope : kScopes)
        m_scope->addItem(QLatin1String(scope));
    m_previous->setArrowType(Qt::UpArrow);
    m_next->setArrowType(Qt::DownArrow);
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close->setAutoRaise(true);
    auto* completer = new QCompleter(m_tags, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    m_tag->setCompleter(completer);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, layout->spacing());
    layout->addWidget(m_caption);
    layout->addWidget(m_text, 3);
    for (QWidget* part : {static_cast<QWidget*>(m_scope), static_cast<QWidget*>(m_previous),
                          static_cast<QWidget*>(m_next), static_cast<QWidget*>(m_count)})
        layout->addWidget(part);
    layout->addStretch(1);
    layout->addWidget(m_tagCaption);
    layout->addWidget(m_tag, 1);
    layout->addWidget(m_close);
}

void FindBar::connectParts()
{
    connect(m_text, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_search.setText(text);
        findFromHere();
    });
    connect(m_scope, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_search.setScope(static_cast<SearchScope>(index));
        findFromHere();
    });
    connect(m_text, &QLineEdit::returnPressed, this, &FindBar::findNext);
    connect(m_next, &QToolButton::clicked, this, &FindBar::findNext);
    connect(m_previous, &QToolButton::clicked, this, &FindBar::findPrevious);
    connect(m_tag, &QLineEdit::returnPressed, this, [this] { goToTag(m_tag->text()); });
    connect(m_tag->completer(), qOverload<const QString&>(&QCompleter::activated), this, &FindBar::goToTag);
    connect(m_tag, &QLineEdit::textEdited, this, &FindBar::showCount);
    connect(m_close, &QToolButton::clicked, this, &FindBar::leave);
    for (const QKeyCombination key : {Qt::SHIFT | Qt::Key_Return, Qt::SHIFT | Qt::Key_Enter})
        connect(new QShortcut(QKeySequence(key), this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
                &QShortcut::activated, this, &FindBar::findPrevious);
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, this, &FindBar::leave);
    connect(&m_sheet, &vaSpread::currentCellChanged, this, &FindBar::showCount);
    connect(m_sheet.grid(), &QAbstractItemModel::modelReset, this, [this] { noteChange(true); });
    connect(m_sheet.grid(), &QAbstractItemModel::dataChanged, this, [this] { noteChange(false); });
}

void FindBar::translate()
{
    const auto text = [this](const char* key) {
        return platform::visibleText(m_kx.library().tranStr(QString::fromLatin1(key)));
    };
    m_caption->setText(text("Find:"));
    m_tagCaption->setText(text("Go to tag:"));
    for (int i = 0; i < m_scope->count(); ++i)
        m_scope->setItemText(i, text(kScopes[i]));
    const std::pair<QWidget*, const char*> names[] = {{m_text, "Find"},        {m_scope, "Show"},     {m_next, "Next"},
                                                      {m_close, "Close"},      {m_tag, "Go to tag:"}, {m_count, "Hits"},
                                                      {m_previous, "Previous"}};
    for (const auto& [part, key] : names)
        part->setAccessibleName(text(key));
    for (QWidget* button : {m_next, m_previous, m_close})
        button->setToolTip(button->accessibleName());
    noteChange(true);
}

void FindBar::open(QLineEdit& field)
{
    show();
    follow();
    field.selectAll();
    field.setFocus(Qt::ShortcutFocusReason);
}

void FindBar::openText()
{
    open(*m_text);
}

void FindBar::openTag()
{
    open(*m_tag);
}

void FindBar::leave()
{
    hide();
    m_sheet.setHighlights({});
    m_sheet.setFocus();
}

// A read or an undo changes many cells one after the other, and a model is loaded in steps.
void FindBar::noteChange(bool isOtherModel)
{
    m_isStale = m_isStale || isOtherModel;
    if (isHidden() || m_isDue)
        return;
    m_isDue = true;
    QMetaObject::invokeMethod(this, &FindBar::follow, Qt::QueuedConnection);
}

void FindBar::follow()
{
    m_isDue = false;
    if (m_isStale)
        reload();
    else
        m_search.refresh();
    showHits();
}

void FindBar::reload()
{
    m_isStale = false;
    m_search.reload(Wordings(m_kx.library().context()));
    m_tags->setStringList(m_search.tags());
}

void FindBar::findNext()
{
    if (isHidden() || !m_search.isActive())
        openText();
    goTo(m_search.after(here()));
}

void FindBar::findPrevious()
{
    if (isHidden() || !m_search.isActive())
        openText();
    goTo(m_search.before(here()));
}

// As one types, the current cell stays while it is a hit.
void FindBar::findFromHere()
{
    goTo(m_search.at(here()));
    showHits();
}

CellPlace FindBar::here() const
{
    const QModelIndex at = m_sheet.currentIndex();
    return {at.row() + 1, at.column() + 1};
}

void FindBar::goTo(const std::optional<CellPlace>& place)
{
    if (place)
        m_sheet.setCurrentCell(place->col, place->row);
    showCount();
}

// The bar that was opened for the tag alone goes.
void FindBar::goToTag(const QString& tag)
{
    const auto place = m_search.placeOf(tag);
    goTo(place);
    if (!place)
        m_count->setText(platform::visibleText(m_kx.library().tranStr(QStringLiteral("No such tag"))));
    else if (m_search.isActive())
        m_sheet.setFocus();
    else
        leave();
}

void FindBar::showHits()
{
    m_sheet.setHighlights(m_search.hits());
    showCount();
}

void FindBar::showCount()
{
    const TranslateText tran = m_kx.library().translation();
    const auto count = m_search.hits().size();
    const int number = m_search.numberOf(here());
    QString text;
    if (count > 0)
        text = number > 0 ? tran(QStringLiteral("%1 of %2")).arg(number).arg(count)
                          : tran(QStringLiteral("%1 found")).arg(count);
    else if (m_search.isActive())
        text = tran(QStringLiteral("Not found"));
    m_count->setText(platform::visibleText(text));
}
