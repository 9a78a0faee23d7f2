// Takes the pictures of the manual: vorlant_pictures start|all|report|review|traffic FOLDER. Program folder, settings
// and COM1 come from the environment, as for the program itself; the controller at COM1 is a simulated one. See
// tools/make_pictures.

#include "PaletteColors.h"
#include "ProgramContext.h"
#include "Tour.h"
#include "frmMain.h"

#include <QApplication>
#include <QStyleFactory>

namespace {

constexpr double kPointSize = 9.5;

// The same on every machine, whatever its desktop looks like.
void setLook()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette light(QColor(0xef, 0xef, 0xef));
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    light.setColor(QPalette::HighlightedText, Qt::white);
    light.setColor(QPalette::Link, QColor(0x00, 0x55, 0xaa));
    QApplication::setPalette(light);
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPointSizeF(kPointSize);
    QApplication::setFont(font);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments().mid(1);
    const QHash<QString, void (Tour::*)()> tours{{QStringLiteral("start"), &Tour::start},
                                                 {QStringLiteral("all"), &Tour::all},
                                                 {QStringLiteral("report"), &Tour::report},
                                                 {QStringLiteral("review"), &Tour::review},
                                                 {QStringLiteral("traffic"), &Tour::traffic}};
    if (words.size() != 2 || !tours.contains(words[0]))
        qFatal("usage: vorlant_pictures start|all|report|review|traffic FOLDER");
    setLook();
    const platform::PaletteColors colors;
    ProgramContext program(QCoreApplication::applicationDirPath(), QProcessEnvironment::systemEnvironment(), colors);
    frmMain window(program);
    window.show();
    Tour tour(program, window, words[1]);
    (tour.*tours[words[0]])();
    window.closeWithoutQuestion();
    return 0;
}
