#pragma once

#include "FormControls.h"
#include "ProgramOptions.h"

#include <QString>

class clsINI;

// One translation of one form: walks its controls in their order, looks every property up under the control's key
// (form, "-", control, "-", index), and adds what the language file lacks. With a forced font no font key is touched.
class FormTranslation
{
public:
    FormTranslation(platform::Form& form, clsINI& language, const ProgramOptions& options);

    void run();

private:
    void translateFormItself();
    void translateControl(platform::FormControl& control);
    void setFace(platform::FormControl& control, const QString& faceKey, const QString& designed);
    void translateTexts(platform::FormControl& control);
    void translateParts(platform::FormControl& control);
    void look(platform::FormControl& control, platform::FormProperty which, const QString& key);
    QString lookUp(const QString& section, const QString& key, const QString& current);
    QString controlKey(const platform::FormControl& control) const;

    platform::Form& m_form;
    clsINI& m_language;
    const ProgramOptions& m_options;
    int m_runningIndex = 0; // of the array control met last: a control outside arrays takes it over
};
