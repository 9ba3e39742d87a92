// SPDX-License-Identifier: Apache-2.0
#include "curve/CalcPostfix.h"

namespace zov::curve {

std::vector<std::string> CPostfix::Texts() const
{
    std::vector<std::string> texts;
    texts.reserve(m_items.size());
    for (const SPostfixItem& item : m_items) {
        switch (item.item) {
        case EItem::Number:
        case EItem::Name:
            texts.emplace_back(item.text);
            break;
        case EItem::Operator:
            texts.emplace_back(InfoOf(item.op).text);
            break;
        case EItem::UserCall:
            texts.push_back(std::string(item.text) + '(');
            break;
        case EItem::Variable:
            texts.push_back(std::string(item.text) + '(');
            texts.emplace_back(item.first);
            if (!item.second.empty()) {
                texts.emplace_back(item.second);
            }
            texts.emplace_back(")");
            break;
        }
    }
    return texts;
}

} // namespace zov::curve
