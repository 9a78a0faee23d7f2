#include "FormTranslation.h"

using platform::ControlKind;
using platform::FormControl;
using platform::FormProperty;

namespace {

const QString kControlFace = QStringLiteral("FixedSys");
const QString kPlainFace = QStringLiteral("System");
const QString kDocumentMark = QStringLiteral("- ["); // a caption that carries the name of a document

QString keyword(FormProperty which)
{
    switch (which) {
    case FormProperty::Caption:
        return QStringLiteral("Caption");
    case FormProperty::Font:
        return QStringLiteral("Font");
    case FormProperty::FontSize:
        return QStringLiteral("FontSize");
    case FormProperty::FontCharSet:
        return QStringLiteral("FontCharSet");
    case FormProperty::ToolTipText:
        break;
    }
    return QStringLiteral("ToolTipText");
}

} // namespace

FormTranslation::FormTranslation(platform::Form& form, LookUp lookUp, const ProgramOptions& options)
    : m_form(form), m_lookUp(std::move(lookUp)), m_options(options)
{}

void FormTranslation::run()
{
    translateFormItself();
    for (FormControl* control : m_form.controls())
        translateControl(*control);
}

void FormTranslation::translateFormItself()
{
    const QString section = m_form.name();
    const auto caption = m_form.property(FormProperty::Caption);
    if (caption && !caption->contains(kDocumentMark))
        m_form.setProperty(FormProperty::Caption,
                           m_lookUp(section, keyword(FormProperty::Caption), m_form.designCaption()));
    if (m_options.m_bForceFont) {
        m_form.setProperty(FormProperty::Font, m_options.m_sFont);
        m_form.setProperty(FormProperty::FontSize, m_options.m_sFontSize);
        m_form.setProperty(FormProperty::FontCharSet, QString::number(m_options.m_lCharSet));
        return;
    }
    for (const FormProperty which : {FormProperty::Font, FormProperty::FontSize, FormProperty::FontCharSet}) {
        if (const auto current = m_form.property(which))
            m_form.setProperty(which, m_lookUp(section, keyword(which), *current));
    }
}

QString FormTranslation::controlKey(const FormControl& control) const
{
    return m_form.name() + u'-' + control.name() + u'-' + QString::number(m_runningIndex);
}

void FormTranslation::translateControl(FormControl& control)
{
    m_runningIndex = control.index().value_or(m_runningIndex);
    const QString key = controlKey(control);
    const bool isGrid = control.kind() == ControlKind::Grid;
    if (isGrid)
        setFace(control, m_form.name() + u'-' + control.name(), kPlainFace);
    else
        setFace(control, key, kControlFace);
    translateTexts(control);
    if (!isGrid && m_options.m_bForceFont)
        control.setProperty(FormProperty::FontSize, m_options.m_sFontSize);
    else if (!isGrid)
        look(control, FormProperty::FontSize, key);
    look(control, FormProperty::ToolTipText, key);
}

void FormTranslation::setFace(FormControl& control, const QString& faceKey, const QString& designed)
{
    if (m_options.m_bForceFont) {
        control.setProperty(FormProperty::Font, m_options.m_sFont);
        control.setProperty(FormProperty::FontCharSet, QString::number(m_options.m_lCharSet));
        return;
    }
    if (control.property(FormProperty::Font))
        control.setProperty(FormProperty::Font, m_lookUp(keyword(FormProperty::Font), faceKey, designed));
    look(control, FormProperty::FontCharSet, controlKey(control));
}

void FormTranslation::look(FormControl& control, FormProperty which, const QString& key)
{
    if (const auto current = control.property(which))
        control.setProperty(which, m_lookUp(keyword(which), key, *current));
}

void FormTranslation::translateTexts(FormControl& control)
{
    switch (control.kind()) {
    case ControlKind::Grid:
        break;
    case ControlKind::TabStrip:
    case ControlKind::Toolbar:
        translateParts(control);
        break;
    case ControlKind::StatusBar:
        control.setProperty(FormProperty::Font, kPlainFace);
        break;
    case ControlKind::Plain:
        look(control, FormProperty::Caption, controlKey(control));
        break;
    }
}

void FormTranslation::translateParts(FormControl& control)
{
    const bool isToolbar = control.kind() == ControlKind::Toolbar;
    const QString stem =
        isToolbar ? controlKey(control) + QStringLiteral("-Button") : m_form.name() + u'-' + control.name() + u'-';
    for (const int part : control.parts()) {
        const QString key = stem + QString::number(part);
        for (const FormProperty which : {FormProperty::Caption, FormProperty::ToolTipText}) {
            if (which == FormProperty::Caption || isToolbar)
                control.setPartProperty(part, which, m_lookUp(keyword(which), key, control.partProperty(part, which)));
        }
    }
}
