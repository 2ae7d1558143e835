#pragma once

#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QWidget>

#include <functional>

/// Plays the operator at modal boxes while the code under test waits for them. A box that its
/// action leaves open is closed; an action whose box never opens fails the running test.
class BoxUser : public QObject
{
    Q_OBJECT

public:
    using Action = std::function<void(QWidget *box)>;

    explicit BoxUser(const Action &action);
    ~BoxUser() override;

    /// What to do with the box that opens next, be it above the first or after it.
    void then(const Action &action) { actions.enqueue(action); }

    /// Actions: leave the file box with this path, or with the button.
    static Action choose(const QString &path);
    static Action press(const QString &buttonText);

private slots:
    void look();

private:
    QQueue<Action> actions;
    QPointer<QWidget> current; ///< the box that was served last
};
