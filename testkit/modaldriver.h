#pragma once

#include <QList>
#include <QObject>
#include <QWidget>

#include <functional>
#include <vector>

/// Operates a modal dialog and closes it.
using Answer = std::function<void(QWidget *dialog)>;

namespace answer {

/// Enters a value in an input dialog.
Answer number(int value);
Answer text(const QString &text);
/// Chooses a file in a file dialog.
Answer file(const QString &path);
/// Answers a message box, in any language.
Answer yes();
Answer click(const QString &caption);
Answer close();

} // namespace answer

/// Answers the modal dialogs that open while the code under test waits for them, in their order;
/// a dialog may open above the one being answered. Reports a dialog that has no answer, a dialog
/// that its answer leaves open, and an answer whose dialog has never opened.
class ModalDriver : public QObject
{
    Q_OBJECT

public:
    explicit ModalDriver(const Answer &answer);
    /// Saves a picture of each dialog as it closes under this path, "-", its number and ".png"; an
    /// empty path saves none.
    explicit ModalDriver(const std::vector<Answer> &answers, const QString &picturePath = {});
    ~ModalDriver() override;

    /// Answers one more dialog.
    void then(const Answer &answer) { answers.push_back(answer); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void look();

private:
    void serve(QWidget *dialog);

    std::vector<Answer> answers;
    const QString picturePath;
    QList<QWidget *> served; ///< dialogs whose answers run now, the innermost last
    size_t done = 0;
    int pictures = 0;
};
