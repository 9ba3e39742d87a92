// SPDX-License-Identifier: Apache-2.0
#include "assign/AssignSupport.h"
#include "assign/AssignTexts.h"

namespace zov::test {

using enum ERecordType;
using enum EAssignColumn;

class CAssignTables : public CAssignTest
{
protected:
    void SetUp() override
    {
        m_library = AddLibrary("board.zov", {{Capacitor, "C100N", "RLC", "C 100n;0402", "ceramic"},
                                             {Resistor, "R10K"},
                                             {Capacitor, "C100N_50V"},
                                             {Ic, "U1"}});
    }
    static SDesign Board()
    {
        return {{{"C100N", {"C1", "C2", "C3"}, "OLD", Capacitor, false, false},
                 {"R10K", {"R1"}, "", Any, false, false},
                 {"FIX", {"X1"}, "", Any, true, false},
                 {"NONE", {"N1", "N2"}, "", Any, false, false}}};
    }
    std::shared_ptr<CZovLibrary> m_library;
};

TEST_F(CAssignTables, MappingFillsTheRowsThatAreOpen)
{
    SDesign board = Board();
    board.components[2].name = "U1"; // would be found, but is fixed
    CAssignTable table(board, m_set, m_search);
    EXPECT_EQ(Cells(table, Status), "C100N=|R10K=|U1=|NONE=|");
    const auto found = table.AutoMap({});
    EXPECT_EQ(Cells(table), "C100N=C100N : RLC|R10K=R10K|U1=|NONE=|");
    EXPECT_EQ(Cells(table, ModelType), "C100N=Capacitor|R10K=Resistor|U1=|NONE=|");
    EXPECT_EQ(Cells(table, Description), "C100N=ceramic|R10K=|U1=|NONE=|");
    EXPECT_EQ(Cells(table, Origin), "C100N=OLD|R10K=|U1=|NONE=|");
    EXPECT_TRUE(found[0].model && found[0].exact && found[0].key == EPropId::ModelName);
    EXPECT_FALSE(found[3].model);
    table.EnableSubModels(false);
    EXPECT_EQ(table.CellText(*table.Rows()[0], AssignedModels), "C100N");

    table.RefreshStatus();
    EXPECT_EQ(Cells(table, Status), "C100N=Validated\nmore than one model matches|R10K=Validated|"
                                    "U1=|NONE=Model Not Found|");
    EXPECT_TRUE(table.AutoMap(CSearchOptions())[0].model.record == nullptr); // has one already

    table.SwitchView();
    EXPECT_EQ(Cells(table), "C1=C100N|C2=C100N|C3=C100N|R1=R10K|X1=|N1=|N2=|");
    EXPECT_EQ(Cells(table, Origin), "C1=C100N|C2=C100N|C3=C100N|R1=R10K|X1=U1|N1=NONE|N2=NONE|");
}

TEST_F(CAssignTables, ARequiredTypeKeepsOthersOut)
{
    SDesign board = Board();
    board.components[0].requiredType = Inductor;
    CAssignTable table(board, m_set, m_search);
    table.AutoMap({});
    EXPECT_EQ(Cells(table), "C100N=|R10K=R10K|FIX=|NONE=|");
    EXPECT_EQ(table.CellText(*table.Rows()[0], ModelType), "Inductor");
}

TEST_F(CAssignTables, DesignsAreMappedOnOpeningByTheirStoredFile)
{
    const auto there = m_folder.Write("there.csv", "x");
    const auto gone = m_folder.Path() / "gone.csv";
    const auto with = [](const char* set, const char* value = "1") -> FEnvironment {
        return [=](const char* name) -> std::optional<std::string> {
            return std::string_view(name) == set ? std::optional<std::string>(value) : std::nullopt;
        };
    };
    constexpr const char* kHost = "KVE_TAVRELY_ZOV_DLLVER";
    constexpr const char* kGone = "KVE_TAVRELY_PWT_ASSIGNMODEL";
    EXPECT_TRUE(CAssignTable::MapsOnOpening({}, with("")));
    EXPECT_FALSE(CAssignTable::MapsOnOpening({}, with(kHost)));
    EXPECT_FALSE(CAssignTable::MapsOnOpening(there, with(kGone)));
    EXPECT_FALSE(CAssignTable::MapsOnOpening(gone, with("")));
    EXPECT_TRUE(CAssignTable::MapsOnOpening(gone, with(kGone)));
    EXPECT_TRUE(CAssignTable::MapsOnOpening({}, with(kHost, "0")));
    EXPECT_FALSE(CAssignTable::MapsOnOpening(gone, with(kGone, "0")));
}

TEST_F(CAssignTables, AssigningAsksForOtherComponentsOfTheModel)
{
    CAssignTable table(Board(), m_set, m_search);
    const std::vector<AssignRow*>& rows = table.Rows();
    CAsked no(false);
    table.Assign({rows[0], rows[1]}, Model(m_library, 3), no, m_log);
    EXPECT_TRUE(no.texts.empty());
    EXPECT_EQ(Cells(table), "C100N=U1|R10K=U1|FIX=|NONE=|");

    const auto other = AddLibrary("other.zov", {{Ic, "u1", "B"}, {Capacitor, "C100N"}});
    table.Assign({rows[3]}, Model(other, 0), no, m_log);
    EXPECT_EQ(no.texts.at(0),
              "The model has already been assigned to the component: \nC100N u1\nR10K u1\n\n"
              "Do you want to overwrite it with the new model from the ZOV library?\n"
              "Click Yes to continue.\nClick No to retain the existing model.");
    EXPECT_EQ(Cells(table), "C100N=U1|R10K=U1|FIX=|NONE=u1 : B|");
    CAsked yes(true);
    table.Assign({rows[3]}, Model(other, 0), yes, m_log);
    EXPECT_EQ(Cells(table), "C100N=u1 : B|R10K=u1 : B|FIX=|NONE=u1 : B|");

    table.Assign({rows[0]}, Model(m_library, 0), no, m_log);
    table.Assign({rows[1]}, Model(other, 1), no, m_log);
    EXPECT_EQ(no.texts.back(), assigntext::kOverwriteDiscrete);
    EXPECT_EQ(table.ModelsOf(*rows[0])[0], Model(m_library, 0));
}

TEST_F(CAssignTables, AComponentKeepsToOneModelInRefDesView)
{
    CAssignTable table(Board(), m_set, m_search);
    table.SwitchView();
    const std::vector<AssignRow*>& rows = table.Rows();
    CAsked no(false);
    table.Assign({rows[0]}, Model(m_library, 0), no, m_log);
    table.Assign({rows[1], rows[3]}, Model(m_library, 1), no, m_log);
    ASSERT_EQ(m_log.Lines().size(), 1U);
    EXPECT_EQ(m_log.Lines()[0], "Cannot assign model 'R10K' to the component 'C100N'. Choose the "
                                "valid model 'C100N' and try again.");
    EXPECT_EQ(Cells(table), "C1=C100N : RLC|C2=|C3=|R1=R10K|X1=|N1=|N2=|");
    // All of a component's designators at once take another model.
    table.Assign({rows[0], rows[1], rows[2]}, Model(m_library, 1), no, m_log);
    EXPECT_EQ(Cells(table), "C1=R10K|C2=R10K|C3=R10K|R1=R10K|X1=|N1=|N2=|");
    EXPECT_EQ(m_log.Lines().size(), 1U);
    table.SwitchView();
    EXPECT_EQ(Cells(table), "C100N=R10K|R10K=R10K|FIX=|NONE=|");
}

TEST_F(CAssignTables, RemovingAsksAndReachesAllRowsOfTheModel)
{
    CAssignTable table(Board(), m_set, m_search);
    AssignRow& first = *table.Rows()[0];
    CAsked no(false);
    CAsked yes(true);
    EXPECT_TRUE(table.Remove(first, yes).empty());
    table.Assign({&first}, Model(m_library, 1), yes, m_log);
    EXPECT_TRUE(table.Remove(first, no).empty());
    EXPECT_EQ(no.texts.at(0), "The model 'R10K', has been assigned to the 'C100N'. Do you want to "
                              "remove the model from the 'C100N'?\n");
    table.Assign({table.Rows()[1]}, Model(m_library, 1), no, m_log);
    EXPECT_EQ(table.Remove(first, yes).size(), 2U);
    EXPECT_EQ(yes.texts.back(),
              "The model has already been assigned to the component:\nR10K R10K\n and will be "
              "removed from there as well. Do you want to remove the model?\n");
    EXPECT_EQ(Cells(table), "C100N=|R10K=|FIX=|NONE=|");
    EXPECT_EQ(table.CellText(first, ModelType), "Capacitor"); // as the design asks

    // One designator of a component that has the model as a whole.
    table.Assign({&first}, Model(m_library, 0), yes, m_log);
    table.SwitchView();
    class CFirstOnly final : public CQuestions
    {
        bool YesNo(std::string_view) override { return true; }
    } answer;
    EXPECT_EQ(table.Remove(*table.Rows()[1], answer).size(), 3U);
    EXPECT_EQ(Cells(table), "C1=|C2=|C3=|R1=|X1=|N1=|N2=|");
}

TEST_F(CAssignTables, ModelsOfClosedLibrariesLeaveTheirRows)
{
    const auto other = AddLibrary("other.zov", {{Ic, "X"}, {Resistor, "Y"}});
    CAssignTable table(Board(), m_set, m_search);
    CAsked yes(true);
    table.Assign({table.Rows()[0]}, Model(other, 0), yes, m_log);
    table.Assign({table.Rows()[1]}, Model(other, 1), yes, m_log);
    m_set.SwitchExternal(0, false);
    table.RefreshStatus();
    EXPECT_EQ(table.CellText(*table.Rows()[0], Status), "Model Not Found"); // no other would do
    EXPECT_EQ(table.CellText(*table.Rows()[1], Status),
              "the library of 'Y' is switched off or closed");
    other->Remove(other->At(0));
    EXPECT_EQ(table.DropGoneModels(), 1U);
    m_set.RemoveExternal(0);
    EXPECT_EQ(table.DropGoneModels(), 1U);
    EXPECT_EQ(Cells(table), "C100N=|R10K=|FIX=|NONE=|");
    // The types of models that are gone ask for nothing any more.
    CAssignTable fresh(Board(), m_set, m_search);
    EXPECT_EQ(Cells(table, ModelType), Cells(fresh, ModelType));
    table.SwitchView();
    fresh.SwitchView();
    EXPECT_EQ(Cells(table, ModelType), Cells(fresh, ModelType));
}

TEST_F(CAssignTables, ModelsThatArePutBackKeepTheirRows)
{
    CAssignTable table(Board(), m_set, m_search);
    CAsked yes(true);
    table.Assign({table.Rows()[0]}, Model(m_library, 0), yes, m_log);
    table.Assign({table.Rows()[1]}, Model(m_library, 1), yes, m_log);
    table.Assign({table.Rows()[2]}, Model(m_library, 2), yes, m_log);
    table.BeforeChange(*m_library);
    CZovLibrary other;
    other.Add(Capacitor).SetString(EPropId::ModelName, "c100n"); // another sub-model
    CZovRcdProps& same = other.Add(Capacitor);
    same.SetString(EPropId::ModelName, "C100N");
    same.SetString(EPropId::SubModel, "rlc");
    other.Add(Capacitor).SetString(EPropId::ModelName, "R10K"); // of another type
    *m_library = std::move(other);
    EXPECT_EQ(table.AfterChange(*m_library), 2U);
    EXPECT_EQ(Cells(table), "C100N=C100N : rlc|R10K=|FIX=|NONE=|");
    // A record that only got another name is the same model.
    table.BeforeChange(*m_library);
    m_library->At(1).SetString(EPropId::ModelName, "C100N_NEW");
    EXPECT_EQ(table.AfterChange(*m_library), 0U);
    EXPECT_EQ(Cells(table), "C100N=C100N_NEW : rlc|R10K=|FIX=|NONE=|");
}

TEST_F(CAssignTables, ModelsThatComeBackReturnToTheirRows)
{
    CAssignTable table(Board(), m_set, m_search);
    CAsked yes(true);
    for (const std::size_t row : {0U, 1U, 2U}) {
        table.Assign({table.Rows()[row]}, Model(m_library, 1), yes, m_log);
    }
    const std::vector<CZovLibrary::SPlace> place = {{1, &m_library->At(1)}};
    const auto undo = [&] {
        table.BeforeChange(*m_library);
        m_library->TakeOut(place);
        return table.AfterChange(*m_library);
    };
    const auto redo = [&] {
        table.BeforeChange(*m_library);
        m_library->PutIn(place);
        return table.AfterChange(*m_library);
    };
    const std::string all = Cells(table);
    const std::string types = Cells(table, ModelType);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(undo(), 3U);
        EXPECT_EQ(Cells(table), "C100N=|R10K=|FIX=|NONE=|");
        EXPECT_EQ(redo(), 0U);
        EXPECT_EQ(Cells(table), all);
        EXPECT_EQ(Cells(table, ModelType), types);
    }
    // What a row was given meanwhile stays, and another record of that name is another model.
    undo();
    table.Assign({table.Rows()[0]}, Model(m_library, 0), yes, m_log);
    const std::string other = Cells(table);
    redo();
    EXPECT_EQ(Cells(table).substr(0, other.find('|')), other.substr(0, other.find('|')));
    undo();
    table.BeforeChange(*m_library);
    CZovLibrary read;
    read.AddCopy(m_library->At(0));
    *m_library = std::move(read);
    table.AfterChange(*m_library);
    EXPECT_EQ(Cells(table), other);
}

TEST_F(CAssignTables, TheFindFilterStepsThroughItsHits)
{
    SDesign board{{{"C100N", {"U1", "U2", "C10", "D1", "c2"}, "", Any, false, false}}};
    CAssignTable table(board, m_set, m_search);
    table.SwitchView();
    EXPECT_EQ(table.FindNext(), nullptr);
    EXPECT_EQ(table.FindAll("U1, U2 C*"), 4U);
    EXPECT_FALSE(table.Rows()[3]->found);
    std::string names;
    for (int i = 0; i < 5; ++i) {
        names += table.FindNext()->Name() + " ";
    }
    names += table.FindPrev()->Name() + " ";
    names += table.FindPrev()->Name();
    EXPECT_EQ(names, "U1 U2 C10 c2 U1 c2 C10");
    EXPECT_EQ(table.FindAll(" ;, "), 0U);
    EXPECT_EQ(table.FindAll("?1", true), 2U); // C100N and C100N_50V both match
    CAssignTable all(Board(), m_set, m_search);
    EXPECT_EQ(all.FindAll("", true), 1U);
    EXPECT_EQ(all.FoundRows()[0]->Name(), "C100N");
}

TEST_F(CAssignTables, ColumnsAreThoseOfTheView)
{
    const auto text = [](EAssignView view, bool origin) {
        std::string out;
        for (const SAssignColumn& one : ColumnsOf(view, origin)) {
            out += std::string(one.header) + std::to_string(one.width) +
                   (one.flags == 0x140 ? "! " : " ");
            EXPECT_EQ(one.format, 0xFU);
        }
        return out;
    };
    EXPECT_EQ(text(EAssignView::Component, false),
              "Component-40 0 Model Type-15! Assigned Models-20! Description-15 0 Status-20 ");
    EXPECT_EQ(text(EAssignView::RefDes, true), "RefDes-15 Device-25 Model Type-15! Assigned "
                                               "Model-20! Description-15 0 Status-20 ");
}

} // namespace zov::test
