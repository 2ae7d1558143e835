#pragma once

#include "config/configcontrol.h"
#include "widgets/devicedialog.h"

#include <initializer_list>
#include <vector>

class QBoxLayout;
class QGridLayout;
class QGroupBox;

/// One key of a configuration document: a new one is one more row in its dialog's table.
struct ConfigKey
{
    /// Where control and label stand: in which grid of the dialog, in which row, and in which pair
    /// of columns from the left.
    struct Place
    {
        int grid;
        int row;
        int pair = 0;
    };

    const char *name; ///< as the terminal spells it; the control's object name too
    Place place;
    QString label;
    ConfigControl control;
    QString wrong = {}; ///< what is said of an unacceptable value; empty: nothing
};

/// The keys of one member object of a document, in the order in which they are complained of.
struct ConfigBlock
{
    const char *name; ///< null: the document itself
    std::vector<ConfigKey> keys;
};

/// A dialog for one of the terminal's JSON configuration documents: shows it in its controls, sends
/// what they hold, saves it as a file beside the program and sends such a file.
class ConfigDialog : public DeviceDialog
{
    Q_OBJECT

protected:
    /// How a document travels, and what its dialog says of it.
    struct Document
    {
        bool (CmdClient::*get)(char *out, uint32_t *outLen, size_t capacity) = nullptr;
        bool (CmdClient::*set)(const char *json, uint32_t length) = nullptr;
        QString fileName;  ///< beside the program
        QString loaded;    ///< %1: number of bytes
        QString notParsed; ///< of what has no shape that the keys could be found in, too
        QString issued;
        QString saved; ///< %1 here and below: path
        QString notSaved;
        QString notOpened;
    };

    /// Sizes of the labels and controls in one pair of columns of a grid.
    struct PairSizes
    {
        QSize label;
        QSize control;
    };

    ConfigDialog(const Document &document, std::vector<ConfigBlock> blocks, CmdClient *client,
                 QTextEdit *infoText, QWidget *parent);

    QGridLayout *createGrid(int grid, std::initializer_list<PairSizes> pairs, int spacing);
    /// The buttons "Load" and "Set" of the first size, "Export" and "Import" of the second one.
    QBoxLayout *createButtonRow(int endStretch, QSize loadSize, QSize fileSize,
                                const char *const (&clickSlots)[4] = ButtonSlots);
    /// A group that is of no use before a document has been loaded.
    QGroupBox *createLockedGroup(const QString &title);

protected slots:
    void getBtnClickAct();
    void setBtnClickAct();
    void exportBtnClickAct();
    void importBtnClickAct();

private:
    static void addControl(QGridLayout *layout, const ConfigKey &key, const PairSizes &sizes);
    bool fetch(QByteArray *text);
    /// Sends a document and tells when the terminal has taken it.
    void issue(const QByteArray &text, const QString &line);
    bool parse(const QByteArray &text, Json::Value *root) const;
    void showDocument(const Json::Value &root);
    void showBlock(const ConfigBlock &block, const Json::Value &object);

    static const char *const ButtonSlots[4];

    const Document document;
    const std::vector<ConfigBlock> blocks;
    QList<QGroupBox *> lockedGroups;
};
