#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QRadioButton;

// The character formats of a line as buttons, and a stored one besides for as long as it is none of them.
class FormatChoice : public QWidget
{
    Q_OBJECT

public:
    explicit FormatChoice(QWidget* parent = nullptr);

    // other: a format that is not offered else, as a choice of its own; empty: none.
    void select(const QString& chara, const QString& other);
    QString chara() const; // "N,8,1"

    const QList<QRadioButton*>& buttons() const { return m_buttons; } // of the formats that are always offered
    QRadioButton* other() const { return m_other; }

Q_SIGNALS:
    void changed();

private:
    QList<QRadioButton*> m_buttons;
    QRadioButton* m_other;
    QString m_otherChara;
};
