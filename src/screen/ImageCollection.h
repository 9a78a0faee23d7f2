#pragma once

#include "clsKXAdr.h"

#include <QHash>
#include <QString>
#include <memory>
#include <vector>

// The memory images of a model, one for each read section, in the order in which the data items name them. Owns them.
class ImageCollection
{
public:
    clsKXAdr* find(const QString& section) const { return m_byName.value(section, nullptr); } // null: there is none
    clsKXAdr* add(const QString& section, std::unique_ptr<clsKXAdr> image)
    {
        m_images.push_back(std::move(image));
        m_byName.insert(section, m_images.back().get());
        return m_images.back().get();
    }
    void clear()
    {
        m_byName.clear();
        m_images.clear();
    }
    int count() const { return static_cast<int>(m_images.size()); }
    std::vector<clsKXAdr*> all() const
    {
        std::vector<clsKXAdr*> images;
        images.reserve(m_images.size());
        for (const auto& image : m_images)
            images.push_back(image.get());
        return images;
    }
    clsKXAdr& at(int index) const { return *m_images[static_cast<size_t>(index)]; } // 0-based

private:
    std::vector<std::unique_ptr<clsKXAdr>> m_images;
    QHash<QString, clsKXAdr*> m_byName;
};
