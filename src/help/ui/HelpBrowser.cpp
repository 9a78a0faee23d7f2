#include "HelpBrowser.h"

#include "PaletteColors.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QImage>

#include <utility>

namespace platform {

namespace {

constexpr double kMargin = 14; // between text and frame
constexpr qint64 kMaxFileBytes = 20'000'000;

QImage emptyPicture()
{
    QImage picture(1, 1, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    return picture;
}

} // namespace

HelpBrowser::HelpBrowser(Translate translate, QWidget* parent)
    : QTextBrowser(parent), m_translate(std::move(translate)), m_ownFont(font())
{
    setOpenLinks(false);
    document()->setDocumentMargin(kMargin);
    setColors();
    connect(this, &QTextBrowser::anchorClicked, this, &HelpBrowser::follow);
}

void HelpBrowser::showPage(const QString& folder, const QString& page, const QString& anchor)
{
    const bool isOther = folder != m_folder;
    m_folder = folder;
    QUrl address = QUrl::fromLocalFile(QDir(folder).filePath(page));
    if (!anchor.isEmpty())
        address.setFragment(anchor);
    if (source().matches(address, QUrl::RemoveFragment))
        reload(); // the file may have changed, or come
    setSource(address, QTextDocument::HtmlResource);
    if (isOther)
        clearHistory(); // of another language
}

bool HelpBrowser::isMissing() const
{
    return !QFileInfo(source().toLocalFile()).isFile();
}

void HelpBrowser::follow(const QUrl& link)
{
    const QUrl address = source().resolved(link);
    if (isInside(address))
        setSource(address, QTextDocument::HtmlResource);
    else
        Q_EMIT linkRefused(link.toDisplayString());
}

bool HelpBrowser::isInside(const QUrl& address) const
{
    const QString inside = QDir(m_folder).absolutePath() + u'/';
    return !m_folder.isEmpty() && address.isLocalFile() && QDir::cleanPath(address.toLocalFile()).startsWith(inside);
}

// A link in the folder may lead out of it, and what is there need not be a file that ends.
bool HelpBrowser::isReadable(const QUrl& address) const
{
    const QFileInfo file(address.toLocalFile());
    const QString inside = QDir(m_folder).canonicalPath() + u'/';
    return isInside(address) && file.isFile() && file.size() <= kMaxFileBytes &&
           file.canonicalFilePath().startsWith(inside);
}

// Without an answer the document would look for the file itself, anywhere.
QVariant HelpBrowser::loadResource(int type, const QUrl& name)
{
    const QUrl address = source().resolved(name);
    if (isReadable(address))
        return QTextBrowser::loadResource(type, address);
    if (type == QTextDocument::HtmlResource)
        return missingText(address.toLocalFile());
    if (type == QTextDocument::ImageResource)
        return emptyPicture();
    return QByteArray("");
}

QString HelpBrowser::missingText(const QString& file) const
{
    const QString folder = m_folder.isEmpty() ? QStringLiteral("help") : m_folder;
    const bool hasManual = QFileInfo(m_folder).isDir();
    const QString text =
        m_translate(hasManual ? QStringLiteral("The page %1 of the manual is missing. Install the manual again.")
                              : QStringLiteral("The manual is not in the folder %1. Install the manual again, or copy "
                                               "the folder \"help\" of the program there."));
    return QStringLiteral("<html><head><title>%1</title></head><body><p>%2</p></body></html>")
        .arg(m_translate(QStringLiteral("Help")), text.arg(hasManual ? file : folder).toHtmlEscaped());
}

// Links are coloured when a page is loaded, by the palette of the application: on a dark desktop that may be dark blue.
void HelpBrowser::setColors()
{
    const QColor link = legible(palette().color(QPalette::Link), palette().color(QPalette::Base));
    document()->setDefaultStyleSheet(QStringLiteral("a { color: %1; }").arg(link.name()));
}

void HelpBrowser::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    const bool isColors = event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange;
    if (!isColors || m_isReloading)
        return;
    m_isReloading = true;
    setColors();
    if (!source().isEmpty())
        reload();
    m_isReloading = false;
}

} // namespace platform
