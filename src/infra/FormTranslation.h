#pragma once

#include "FormControls.h"
#include "ProgramOptions.h"

#include <QString>

#include <functional>

// One translation of one form: walks its controls in their order, looks every property up under the control's key
// (form, "-", control, "-", index). With a forced font no font key is touched.
class FormTranslation
{
public:
    // The text of a key of a section; the current one where there is none.
    using LookUp = std::function<QString(const QString& section, const QString& key, const QString& current)>;

    FormTranslation(platform::Form& form, LookUp lookUp, const ProgramOptions& options);

    void run();

private:
    void translateFormItself();
    void translateControl(platform::FormControl& control);
    void setFace(platform::FormControl& control, const QString& faceKey, const QString& designed);
    void translateTexts(platform::FormControl& control);
    void translateParts(platform::FormControl& control);
    void look(platform::FormControl& control, platform::FormProperty which, const QString& key);
    QString controlKey(const platform::FormControl& control) const;

    platform::Form& m_form;
    LookUp m_lookUp;
    const ProgramOptions& m_options;
    int m_runningIndex = 0; // of the array control met last: a control outside arrays takes it over
};
