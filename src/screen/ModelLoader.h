#pragma once

#include <QHash>
#include <QString>
#include <memory>

class clsData;
struct ModelData;

// Takes the items of a screen file into the model, each with its block and its memory image, and notes what is wrong
// with them. Lives for one load.
class ModelLoader
{
public:
    explicit ModelLoader(ModelData& model) : m_model(model) {}

    // The item's place in the grid must lie within rows and columns.
    clsData& add(std::unique_ptr<clsData> item, int rows, int cols);

private:
    bool registerTag(const clsData& item);
    void noteTakenCell(const clsData& item);
    void joinImage(const clsData& item);
    void checkItem(const clsData& item, int rows, int cols);

    ModelData& m_model;
    QHash<QString, QString> m_tagByFileKey;
};
