// SPDX-License-Identifier: Apache-2.0
#include "app/editor/FieldEditor.h"

#include "app/ModelFiles.h"
#include "app/editor/EditorColors.h"
#include "app/editor/EditorListCtrl.h"
#include "base/File.h"
#include "core/LibraryFiles.h"
#include "ui/Prompt.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace zov::app {
namespace {

QString Shown(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

constexpr int kTextLines = 4;
constexpr std::size_t kShortestSize = 4;

const char* FilterOf(const SFieldInfo& info)
{
    if (std::string_view(info.name) == "IBIS") {
        return "IBIS files (*.ibs);;All files (*)";
    }
    return info.kind == EFieldKind::Circuit
               ? "Models (*.s1p *.s2p *.ts *.sp *.ckt *.mod *.cir);;All files (*)"
               : "SPICE files (*.sp *.ckt *.mod *.cir *.inc *.lib);;All files (*)";
}

/// As a library names it: relative to its folder, with slashes, where there is a way.
std::string NameFrom(const std::filesystem::path& folder, const std::filesystem::path& file)
{
    const std::filesystem::path relative =
        folder.empty() ? std::filesystem::path() : file.lexically_proximate(folder);
    return PathText((relative.empty() ? file : relative).generic_string());
}

} // namespace

/// A text below a field. Form layouts remember heights for widths that a field had before its
/// remark came, so the text insists on the height that it needs itself.
class CFieldRemark final : public QLabel
{
public:
    explicit CFieldRemark(QWidget* parent)
        : QLabel(parent)
    {
        setWordWrap(true);
    }
    void Say(const QString& text)
    {
        setText(text);
        setVisible(!text.isEmpty());
        FitHeight();
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QLabel::resizeEvent(event);
        FitHeight();
    }

private:
    void FitHeight() { setMinimumHeight(text().isEmpty() ? 0 : heightForWidth(width())); }
};

CFieldEditor::CFieldEditor(const SRecordField& field, const SFieldContext& context, QWidget* parent)
    : QWidget(parent)
    , m_field(field)
    , m_context(context)
{
    setObjectName(QLatin1String("Field_") + QLatin1String(field.info.name));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    Make();
    m_remark = new CFieldRemark(this);
    m_remark->setObjectName(QLatin1String("Remark_") + QLatin1String(field.info.name));
    m_remark->hide();
    layout->addWidget(m_remark);
}

void CFieldEditor::Make()
{
    const QString name = QLatin1String("ui_IDC_") + QLatin1String(m_field.info.name);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    QWidget* input = nullptr;
    switch (m_field.info.kind) {
    case EFieldKind::Rows:
        input = m_rows = new CUiEditorListCtrl(m_field.info, this);
        connect(m_rows, &CUiEditorListCtrl::Edited, this, &CFieldEditor::RowsEdited);
        break;
    case EFieldKind::Choice:
        input = m_choice = new QComboBox(this);
        connect(m_choice, qOverload<int>(&QComboBox::activated), this, &CFieldEditor::ChoiceMade);
        break;
    case EFieldKind::LongText:
    case EFieldKind::Circuit:
        input = m_text = new QPlainTextEdit(this);
        m_text->setTabChangesFocus(true);
        m_text->setFixedHeight(fontMetrics().lineSpacing() * kTextLines + 12);
        connect(m_text, &QPlainTextEdit::textChanged, this, &CFieldEditor::TextTyped);
        break;
    default:
        input = m_line = new QLineEdit(this);
        connect(m_line, &QLineEdit::textEdited, this, &CFieldEditor::TextTyped);
        if (m_field.info.kind == EFieldKind::Number) {
            connect(m_line, &QLineEdit::editingFinished, this, [this] {
                if (IsTouched() && !HasError()) { // as it will be shown
                    ShowText(Shown(FieldText(m_value, m_field.info, m_context.units)));
                }
            });
        }
    }
    if (!IsTable()) {
        input->setObjectName(name);
    }
    row->addWidget(input, 1);
    if (m_field.info.kind == EFieldKind::File || m_field.info.kind == EFieldKind::Circuit) {
        auto* pick = new QToolButton(this);
        pick->setText(QStringLiteral("..."));
        pick->setToolTip(tr("Choose a file"));
        pick->setObjectName(name + QStringLiteral("_Pick"));
        connect(pick, &QToolButton::clicked, this, &CFieldEditor::PickFile);
        row->addWidget(pick, 0, Qt::AlignTop);
        m_open = new QToolButton(this);
        m_open->setText(tr("Open"));
        m_open->setToolTip(tr("Open the file in the window for its kind"));
        m_open->setObjectName(name + QStringLiteral("_Open"));
        connect(m_open, &QToolButton::clicked, this, &CFieldEditor::OpenFile);
        row->addWidget(m_open, 0, Qt::AlignTop);
    }
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

QWidget* CFieldEditor::Input() const
{
    return m_line != nullptr     ? static_cast<QWidget*>(m_line)
           : m_text != nullptr   ? static_cast<QWidget*>(m_text)
           : m_choice != nullptr ? static_cast<QWidget*>(m_choice)
                                 : static_cast<QWidget*>(&m_rows->Table());
}

void CFieldEditor::Load(const SFieldValue& value, bool differ, bool keepTyped)
{
    const bool keep = keepTyped && IsTouched();
    m_loaded = differ ? SFieldValue() : value;
    m_differ = differ;
    if (!keep) {
        m_edited = false;
        m_error.clear();
        m_value = m_loaded;
        ShowLoaded();
    }
    Check();
}

void CFieldEditor::ShowLoaded()
{
    const QString several = m_differ ? tr("several values") : QString();
    m_showing = true;
    if (m_rows != nullptr) {
        const TFieldRows* rows = m_value.As<TFieldRows>();
        m_rows->SetUnits(m_context.units);
        m_rows->SetRows(rows == nullptr ? TFieldRows() : *rows);
        m_rows->SetNote(m_differ ? tr("several values; rows that you add replace all of them")
                                 : QString());
    } else if (m_choice != nullptr) {
        m_choice->clear();
        for (const std::string_view choice : m_field.info.choices) {
            m_choice->addItem(Shown(choice));
        }
        if (m_differ) {
            m_choice->insertItem(0, several);
        }
        const int* index = m_value.As<int>();
        m_choice->setCurrentIndex(m_differ ? 0 : index == nullptr ? 0 : *index);
    } else {
        ShowText(Shown(FieldText(m_value, m_field.info, m_context.units)));
        const SUnit unit = m_context.units.Of(m_field.info.quantity);
        const QString hint = m_differ                         ? several
                             : m_field.owner == EPropId::Size ? tr("0402E (inch) or 1005M (metric)")
                             : m_field.info.quantity == EQuantity::None ? QString()
                                                                        : Shown(unit.suffix);
        if (m_line != nullptr) {
            m_line->setPlaceholderText(hint);
        } else {
            m_text->setPlaceholderText(hint);
        }
    }
    m_showing = false;
}

void CFieldEditor::ShowText(const QString& text)
{
    const bool showing = m_showing;
    m_showing = true;
    if (m_line != nullptr) {
        m_line->setText(text);
        m_line->setCursorPosition(0);
    } else if (m_text != nullptr) {
        m_text->setPlainText(text);
    }
    m_showing = showing;
}

QString CFieldEditor::TypedText() const
{
    return m_line != nullptr ? m_line->text() : m_text->toPlainText();
}

void CFieldEditor::TextTyped()
{
    if (m_showing) {
        return;
    }
    m_edited = true;
    const QString text = TypedText();
    QString loaded = Shown(FieldText(m_loaded, m_field.info, m_context.units));
    loaded.remove(QLatin1Char('\r'));
    const bool isSharedName = m_context.several && m_field.owner == EPropId::ModelName;
    if (text == loaded && (!m_differ || isSharedName)) {
        m_value = m_loaded; // every digit and line end as it was
        m_error.clear();
        m_edited = !isSharedName;
    } else if (isSharedName) {
        m_error = tr("Models can't share a name. Select one model to rename it.");
    } else if (CResult<SFieldValue> value =
                   ParseField(text.toStdString(), m_field.info, m_context.units)) {
        m_value = value.Take();
        m_error.clear();
    } else {
        m_error = Shown(value.Error().text);
    }
    Check();
    Q_EMIT Edited();
}

void CFieldEditor::ChoiceMade()
{
    const int index = m_choice->currentIndex() - (m_differ ? 1 : 0);
    m_edited = index >= 0;
    m_value = index >= 0 ? SFieldValue(index) : m_loaded;
    Check();
    Q_EMIT Edited();
}

void CFieldEditor::RowsEdited()
{
    if (m_showing) {
        return;
    }
    m_edited = true;
    m_value = SFieldValue(m_rows->Rows());
    const int errors = m_rows->ErrorCount();
    m_error = errors == 0   ? QString()
              : errors == 1 ? tr("One cell can't be read; see its tip.")
                            : tr("%1 cells can't be read; see their tips.").arg(errors);
    Check();
    Q_EMIT Edited();
}

void CFieldEditor::PickFile()
{
    const QString path =
        ui::CPrompt::OpenFile(this, tr("Choose a File"), tr(FilterOf(m_field.info)));
    if (!path.isEmpty()) {
        ShowText(Shown(NameFrom(m_context.folder, TextPath(path.toStdString()))));
        TextTyped();
    }
}

std::filesystem::path CFieldEditor::FilePath() const
{
    const std::string* text = m_value.As<std::string>();
    if (text == nullptr || text->empty() || IsCircuitText(*text)) {
        return {};
    }
    return LocateCircuitFile(m_context.folder, *text, m_context.trackFolder().toStdString());
}

void CFieldEditor::OpenFile()
{
    if (!OpenModelFile(Shown(PathText(FilePath())))) {
        ui::CPrompt::Tell(this, tr("There is no window for files of this kind."));
    }
}

bool CFieldEditor::IsTouched() const
{
    if (!m_edited) {
        return false;
    }
    if (!m_error.isEmpty() || m_differ) {
        return true;
    }
    // A choice that was not made is its first one, a table that is not there one without rows.
    if (m_choice != nullptr && m_loaded.IsNone()) {
        return m_value != SFieldValue(0);
    }
    return m_value != m_loaded && !(m_loaded.IsNone() && m_value == SFieldValue(TFieldRows()));
}

bool CFieldEditor::HasError() const
{
    return !m_error.isEmpty();
}

QString CFieldEditor::Remark() const
{
    const SFieldInfo& info = m_field.info;
    if (m_differ && !m_edited) {
        return {};
    }
    if (m_value.IsNone()) {
        return info.required && m_wanted ? tr("A value is required here.") : QString();
    }
    const std::string* text = m_value.As<std::string>();
    if (text == nullptr) {
        return {};
    }
    const bool isFile = info.kind == EFieldKind::File ||
                        (info.kind == EFieldKind::Circuit && !IsCircuitText(*text));
    if (isFile) {
        const std::string track = m_context.trackFolder().toStdString();
        if (LocateCircuitFile(m_context.folder, *text, track).empty()) {
            return tr("There is no such file.");
        }
    }
    if (m_field.owner == EPropId::ModelName && m_context.isNameTaken(*text)) {
        return tr("Another model of this type has that name.");
    }
    if (m_field.owner == EPropId::Size && SplitSize(*text).code.size() < kShortestSize) {
        return tr("A size has at least four characters: 0402E (inch) or 1005M (metric).");
    }
    if (!FitsExchange(*text)) {
        return tr("An exchange file (.zovx) can't hold the characters \" & < >; in a .zov file "
                  "they are fine.");
    }
    return {};
}

void CFieldEditor::SetWanted(bool wanted)
{
    if (wanted != m_wanted) {
        m_wanted = wanted;
        Check();
    }
}

void CFieldEditor::Check()
{
    const QString remark = m_error.isEmpty() ? Remark() : m_error;
    m_remark->Say(remark);
    if (m_open != nullptr) {
        m_open->setEnabled(!FilePath().empty());
    }
    const QColor color = m_error.isEmpty() ? WarningColor() : ErrorColor();
    QPalette palette = m_remark->palette();
    palette.setColor(QPalette::WindowText, color);
    m_remark->setPalette(palette);
    QPalette input;
    if (!m_error.isEmpty()) {
        input.setColor(QPalette::Text, ErrorColor());
    }
    if (!IsTable()) {
        Input()->setPalette(input);
        Input()->setToolTip(remark);
    }
}

} // namespace zov::app
