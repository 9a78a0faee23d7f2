#include "FileChooser.h"

#include "VisibleText.h"

#include <QFileDialog>

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

} // namespace

QString chooseFile(QWidget* owner, const FileQuestion& question)
{
    QFileDialog dialog(owner);
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
