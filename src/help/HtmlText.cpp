#include "HtmlText.h"

#include <QRegularExpression>

QString htmlText(QString html)
{
    static const QRegularExpression invisible(QStringLiteral("<(style|script)\\b.*?</\\1>|<!--.*?-->"),
                                              QRegularExpression::DotMatchesEverythingOption |
                                                  QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression mark(QStringLiteral("<[^>]*>"));
    static const QRegularExpression apart(
        QStringLiteral("</?(p|li|td|th|tr|dt|dd|h[1-6]|br|div|pre|ul|ol|table)\\b[^>]*>"),
        QRegularExpression::CaseInsensitiveOption);
    html.remove(invisible);
    html.replace(apart, QStringLiteral(" "));
    html.remove(mark);
    html.replace(QStringLiteral("&lt;"), QStringLiteral("<")).replace(QStringLiteral("&gt;"), QStringLiteral(">"));
    html.replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
    html.replace(QStringLiteral("&quot;"), QStringLiteral("\"")).replace(QStringLiteral("&amp;"), QStringLiteral("&"));
    return html.simplified();
}
