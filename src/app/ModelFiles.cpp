// SPDX-License-Identifier: Apache-2.0
#include "app/ModelFiles.h"

#include <algorithm>
#include <vector>

namespace zov::app {
namespace {

std::vector<CModelFileOpener*>& Openers()
{
    static std::vector<CModelFileOpener*> openers;
    return openers;
}

} // namespace

CModelFileOpener::CModelFileOpener(FOpen open)
    : m_open(std::move(open))
{
    Openers().push_back(this);
}

CModelFileOpener::~CModelFileOpener()
{
    std::erase(Openers(), this);
}

bool OpenModelFile(const QString& path)
{
    const std::vector<CModelFileOpener*>& openers = Openers();
    return std::any_of(openers.rbegin(), openers.rend(),
                       [&](const CModelFileOpener* opener) { return opener->m_open(path); });
}

} // namespace zov::app
