#include "FileChooser.h"

#include "VisibleText.h"

#include <QFileDialog>
#include <QStyledItemDelegate>

namespace {

QStringList nameFilters(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns = parts[i + 1];
        filters << QStringLiteral("%1 (%2)").arg(platform::visibleText(parts[i].section(u'(', 0, 0).trimmed()),
                                                 patterns.replace(u';', u' '));
    }
    return filters;
}

// A name may hold what makes it look like another.
class VisibleNames : public QStyledItemDelegate
{
public:
    QString displayText(const QVariant& value, const QLocale& locale) const override
    {
        return platform::visibleText(QStyledItemDelegate::displayText(value, locale));
    }
};

} // namespace

QString chooseFile(QWidget* owner, const FileQuestion& question)
{
    VisibleNames names;
    QFileDialog dialog(owner);
    dialog.setItemDelegate(&names);
    dialog.setAcceptMode(question.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(question.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilters(nameFilters(question.filter) << QStringLiteral("* (*)"));
    dialog.setDefaultSuffix(question.extension);
    if (!question.folder.isEmpty())
        dialog.setDirectory(question.folder);
    if (!question.name.isEmpty())
        dialog.selectFile(question.name);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
