// SPDX-License-Identifier: Apache-2.0
/// What an update handler sees of the entries of its command: enable, check, re-label.
///
///     void CLibFrame::OnUpdateFileSave(CCmdUI& ui) { ui.Enable(m_library.IsModified()); }
#pragma once

#include <QString>

class QAction;
class QWidget;

namespace zov::ui {

/// Keeps the state that a handler asked for. By itself it touches no widget, so that a handler can
/// be asked about its command without one.
class CCmdUI
{
public:
    explicit CCmdUI(unsigned command)
        : m_command(command)
    {
    }
    CCmdUI(const CCmdUI&) = delete;
    CCmdUI& operator=(const CCmdUI&) = delete;
    virtual ~CCmdUI() = default;

    [[nodiscard]] unsigned Command() const { return m_command; }
    [[nodiscard]] bool IsEnabled() const { return m_enabled; }
    [[nodiscard]] bool IsChecked() const { return m_checked; }
    [[nodiscard]] const QString& Text() const { return m_text; }

    virtual void Enable(bool on = true) { m_enabled = on; }
    virtual void SetCheck(bool on = true) { m_checked = on; }
    virtual void SetText(const QString& text) { m_text = text; }

private:
    unsigned m_command;
    bool m_enabled = true;
    bool m_checked = false;
    QString m_text;
};

/// The toolkit's form: hands what is asked for to something on the screen.
class CQtCmdUI : public CCmdUI
{
public:
    using CCmdUI::CCmdUI;
    void Enable(bool on = true) final;
    void SetCheck(bool on = true) final;
    void SetText(const QString& text) final;

private:
    virtual void ShowEnabled(bool on) = 0;
    virtual void ShowChecked(bool on) = 0;
    virtual void ShowText(const QString& text) = 0;
};

/// An entry of menus and toolbars.
class CQtActionCmdUI final : public CQtCmdUI
{
public:
    CQtActionCmdUI(unsigned command, QAction& action);

private:
    void ShowEnabled(bool on) override;
    void ShowChecked(bool on) override;
    void ShowText(const QString& text) override;

    QAction& m_action;
};

/// A button or any other widget of a dialog; checking and re-labelling reach buttons, re-labelling
/// reaches labels, too.
class CQtWidgetCmdUI final : public CQtCmdUI
{
public:
    CQtWidgetCmdUI(unsigned command, QWidget& widget);

private:
    void ShowEnabled(bool on) override;
    void ShowChecked(bool on) override;
    void ShowText(const QString& text) override;

    QWidget& m_widget;
};

} // namespace zov::ui
