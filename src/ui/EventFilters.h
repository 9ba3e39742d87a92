// SPDX-License-Identifier: Apache-2.0
/// Event filters that are installed on widgets, one purpose each.
#pragma once

#include "ui/CmdTarget.h"

#include <QObject>
#include <QString>

#include <functional>

class QEvent;
class QWidget;

namespace zov::ui {

/// Watches one object and ends with it. Derived filters say what they do with its events.
class CQtObjectEventFilter : public QObject
{
    Q_OBJECT

public:
    /// @param watched owns the filter
    explicit CQtObjectEventFilter(QObject& watched);

    bool eventFilter(QObject* watched, QEvent* event) final;

protected:
    /// @return whether the event ends here
    virtual bool OnEvent(QObject& watched, QEvent& event) = 0;
};

/// Runs a command when the watched widget gets an event of one type, a double click for example.
class CQtObjectEventFilterWithCmdTarget final : public CQtObjectEventFilter
{
    Q_OBJECT

public:
    /// @param eventType a QEvent::Type
    /// @param target    outlives the widget; the event goes on to the widget when no target of the
    ///                  chain has the command
    CQtObjectEventFilterWithCmdTarget(QObject& watched, int eventType, CCmdTargetBase& target,
                                      unsigned command);

private:
    bool OnEvent(QObject& watched, QEvent& event) override;

    int m_eventType;
    CCmdTargetBase& m_target;
    unsigned m_command;
};

/// Enter and Return in an edit field do what the field is for, and don't press the dialog's default
/// button.
class CQtEnterKeyPressEventFilter final : public CQtObjectEventFilter
{
    Q_OBJECT

public:
    CQtEnterKeyPressEventFilter(QObject& watched, std::function<void()> onEnter);

private:
    bool OnEvent(QObject& watched, QEvent& event) override;

    std::function<void()> m_onEnter;
};

/// The help key gives the topic of the widget that has the focus: its own, or that of the nearest
/// parent which has one.
class CQtHelpTopicEventFilter final : public CQtObjectEventFilter
{
    Q_OBJECT

public:
    CQtHelpTopicEventFilter(QObject& watched, std::function<void(const QString& topic)> onHelp);

    static void SetTopic(QWidget& widget, const QString& topic);
    /// Empty when neither the widget nor a parent has a topic.
    static QString TopicOf(const QWidget& widget);

private:
    bool OnEvent(QObject& watched, QEvent& event) override;

    std::function<void(const QString&)> m_onHelp;
};

/// Sees every event of a widget before it does; the function says which end there. For the odd case
/// that needs no class of its own.
class CQtSubClassEventFilter final : public CQtObjectEventFilter
{
    Q_OBJECT

public:
    CQtSubClassEventFilter(QObject& watched, std::function<bool(QEvent&)> onEvent);

private:
    bool OnEvent(QObject& watched, QEvent& event) override;

    std::function<bool(QEvent&)> m_onEvent;
};

} // namespace zov::ui
