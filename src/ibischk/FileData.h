// SPDX-License-Identifier: Apache-2.0
/// What a check has gathered from the file. Each family fills its own part.
#pragma once

#include "ibischk/circuitfiles.h"
#include "ibischk/cmpnt.h"
#include "ibischk/ebdmdl.h"
#include "ibischk/emd.h"
#include "ibischk/emdset.h"
#include "ibischk/hdr.h"
#include "ibischk/imsmdl.h"
#include "ibischk/mdl.h"
#include "ibischk/mdlccmodel.h"
#include "ibischk/msel.h"
#include "ibischk/partfiles.h"
#include "ibischk/pkgmdl.h"
#include "ibischk/stringlist.h"
#include "ibischk/testdata.h"
#include "ibischk/testload.h"

#include <vector>

namespace zov::ibischk {

/// Vectors are in the order of the file; an index holds places in the vector of its name. The last
/// entry of a vector is the section that is open, when the scope says so.
struct SFileData
{
    SHeader header;

    std::vector<SComponent> components;
    CNameIndex componentNames;

    std::vector<SModelSelector> selectors;
    CNameIndex selectorNames;

    std::vector<SModelInfo> models;
    CNameIndex modelNames;
    SModel model;                         ///< the open one
    std::vector<SCCompBlock> cCompBlocks; ///< of the open one
    SAlgorithmicFiles algorithmicFiles;

    std::vector<SSubmodelInfo> submodels;
    CNameIndex submodelNames;
    SSubmodel submodel; ///< the open one

    std::vector<STestData> testData;
    CNameIndex testDataNames;
    std::vector<STestLoad> testLoads;
    CNameIndex testLoadNames;

    std::vector<SExternal> circuits; ///< [External Circuit]
    CNameIndex circuitNames;

    std::vector<SPackageModel> packageModels;
    CNameIndex packageModelNames;
    SMatrix matrix; ///< the open one
    SPath stub;     ///< the open one

    std::vector<SBoard> boards;
    CPartFiles partFiles;       ///< that boards and modules name
    CCircuitFiles circuitFiles; ///< that circuit bodies name

    std::vector<SModelSet> interconnectSets;
    CNameIndex interconnectSetNames;

    std::vector<SEmd> emds;
    CNameIndex emdNames;
    std::vector<SModelSet> emdSets;
    CNameIndex emdSetNames;
};

} // namespace zov::ibischk
