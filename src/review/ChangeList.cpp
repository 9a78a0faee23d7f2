#include "ChangeList.h"

#include "HeldValue.h"
#include "ItemDisplay.h"
#include "clsKX.h"

ChangeRow changeRow(const clsKX& kx, const clsData& item)
{
    ChangeRow row;
    row.tag = item.Key();
    row.name = item.nameOrTag();
    if (const clsBlock* block = kx.getBlockByNo(item.BlockNo()))
        row.block = block->m_sName;
    row.value = item.Data();
    row.valueShown = item.VData();
    row.kind = item.Class();
    row.cause = item.cause;
    if (const clsData* cause = kx.getDataByTag(item.cause.tag))
        row.causeName = cause->nameOrTag();
    row.isAllowed = item.isAllowed();
    row.hasWords = hasWords(item);
    if (const auto held = heldValue(kx.data(), item)) {
        row.held = *held;
        row.heldShown = shownValue(item, kx.data().lookup, *held);
    }
    return row;
}

std::vector<ChangeRow> changesOf(const clsKX& kx)
{
    std::vector<ChangeRow> rows;
    for (const auto& item : kx.items()) {
        if (differsFromHeld(kx.data(), *item))
            rows.push_back(changeRow(kx, *item));
    }
    return rows;
}

QString causeText(const ChangeCause& cause, const QString& followed, const TranslateText& tran)
{
    switch (cause.kind) {
    case ChangeCause::Kind::None:
        return {};
    case ChangeCause::Kind::Typed:
        return tran(QStringLiteral("typed"));
    case ChangeCause::Kind::Chosen:
        return tran(QStringLiteral("chosen"));
    case ChangeCause::Kind::Pasted:
        return tran(QStringLiteral("pasted"));
    case ChangeCause::Kind::Loaded:
        return tran(QStringLiteral("loaded"));
    case ChangeCause::Kind::Followed:
        break;
    }
    return tran(QStringLiteral("followed from %1")).arg(followed);
}
