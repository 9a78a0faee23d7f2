#include "WindowLayout.h"

#include "Conversions.h"
#include "FileLocations.h"
#include "FormPlacement.h"
#include "IniBatch.h"
#include "clsINI.h"

#include <algorithm>

namespace {

const QString kLeft = QStringLiteral("LEFT");
const QString kTop = QStringLiteral("TOP");
const QString kWidth = QStringLiteral("WIDTH");
const QString kHeight = QStringLiteral("HEIGHT");
const QString kSplitLeft = QStringLiteral("SPLITLEFT");

constexpr int kUnplaced = -100;     // of a form that was never placed
constexpr int kOverhang = 10;       // that far an edge may stand out of the desktop
constexpr int kFarthest = 15000000; // no desktop is that large; keeps sums of lengths within an int
constexpr QSize kSmallestUsable(1800, 900);
constexpr QSize kTitleGrip(600, 300); // so much of a title bar must be seen to drag a window by it

QString sectionOf(const platform::FormPlacement& form)
{
    return form.name() + form.id();
}

QRect desktopOf(const QVector<QRect>& screens)
{
    QRect all;
    for (const QRect& screen : screens)
        all |= screen;
    return all;
}

int usableLength(int stored, int designed, int smallest, int largest)
{
    return std::min(stored < smallest ? designed : stored, largest);
}

bool canBeReached(const QRect& bounds, const QVector<QRect>& screens)
{
    const QRect titleBar(bounds.topLeft(), QSize(bounds.width(), kTitleGrip.height()));
    return std::any_of(screens.begin(), screens.end(), [&](const QRect& screen) {
        const QRect seen = titleBar & screen;
        return seen.width() >= std::min(bounds.width(), kTitleGrip.width()) &&
               seen.height() >= kTitleGrip.height() - kOverhang;
    });
}

bool isPlaced(const QRect& bounds, const QVector<QRect>& screens)
{
    if (bounds.topLeft() == QPoint(kUnplaced, kUnplaced))
        return false;
    const QRect desktop = desktopOf(screens);
    return bounds.left() >= desktop.left() - kOverhang && bounds.top() >= desktop.top() - kOverhang &&
           canBeReached(bounds, screens);
}

QRect centred(const QRect& bounds, const QRect& screen)
{
    return {screen.left() + (screen.width() - bounds.width()) / 2,
            screen.top() + (screen.height() - bounds.height()) / 5, bounds.width(), bounds.height()};
}

// The keys of one form's section.
class StoredForm
{
public:
    StoredForm(Context& context, const platform::FormPlacement& form)
        : m_ini(layoutFile(context)), m_section(sectionOf(form))
    {}

    int number(const QString& key, int fallback)
    {
        const int stored = convert::toLong(m_ini.GetIniData(m_section, key, QString::number(fallback)), fallback);
        return stored >= -kFarthest && stored <= kFarthest ? stored : fallback;
    }
    void put(const QString& key, int value) { m_ini.PutIniData(m_section, key, value); }

private:
    clsINI m_ini;
    QString m_section;
};

void loadBounds(StoredForm& stored, platform::FormPlacement& form)
{
    const QSize designed = form.boundsTwips().size();
    const int left = stored.number(kLeft, kUnplaced);
    const int top = stored.number(kTop, kUnplaced);
    const int width = stored.number(kWidth, designed.width());
    const int height = stored.number(kHeight, designed.height());
    const QVector<QRect> screens = form.screensTwips();
    if (screens.isEmpty())
        return;
    const QSize largest = desktopOf(screens).size();
    const QRect bounds(left, top, usableLength(width, designed.width(), kSmallestUsable.width(), largest.width()),
                       usableLength(height, designed.height(), kSmallestUsable.height(), largest.height()));
    const bool wasCut = width > largest.width() || height > largest.height();
    form.setBoundsTwips(bounds);
    if (wasCut || !isPlaced(bounds, screens))
        form.setBoundsTwips(centred(form.boundsTwips(), screens.first()));
}

void loadSplitter(StoredForm& stored, platform::FormPlacement& form)
{
    const std::optional<int> current = form.splitLeftTwips();
    if (!current)
        return;
    const int left = stored.number(kSplitLeft, *current);
    form.setSplitLeftTwips(left >= 0 && left <= form.boundsTwips().width() ? left : *current);
}

} // namespace

void windowlayout::load(Context& context, platform::FormPlacement& form)
{
    IniBatch batch(context);
    StoredForm stored(context, form);
    loadBounds(stored, form);
    loadSplitter(stored, form);
    batch.commitLogged();
}

void windowlayout::save(Context& context, const platform::FormPlacement& form)
{
    if (form.windowState() != platform::WindowState::Normal)
        return;
    IniBatch batch(context);
    StoredForm stored(context, form);
    const QRect bounds = form.boundsTwips();
    stored.put(kLeft, bounds.left());
    stored.put(kTop, bounds.top());
    stored.put(kWidth, bounds.width());
    stored.put(kHeight, bounds.height());
    if (const auto splitLeft = form.splitLeftTwips())
        stored.put(kSplitLeft, *splitLeft);
    batch.commitLogged();
}
