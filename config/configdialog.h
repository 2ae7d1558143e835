#pragma once

#include "config/configcontrol.h"
#include "widgets/devicedialog.h"

#include <initializer_list>
#include <vector>

class QBoxLayout;
class QGridLayout;
class QGroupBox;

/// One key of a configuration document; a row in its dialog's table.
struct ConfigKey
{
    /// The place of label and control: the grid within the dialog, the row, and the pair of columns
    /// counted from the left.
    struct Place
    {
        int grid;
        int row;
        int pair = 0;
    };

    const char *name; ///< in the terminal's spelling; also the control's object name
    Place place;
    QString label;
    ConfigControl control;
    QString wrong = {}; ///< log line for a value that is not accepted; may be empty
};

/// The keys of one member object of a document, in the order in which they are checked.
struct ConfigBlock
{
    const char *name; ///< null for the document itself
    std::vector<ConfigKey> keys;
};

/// A dialog for one of the terminal's JSON configuration documents. It loads the document into its
/// controls, sends their values, exports the document to a file beside the program and imports such
/// a file.
class ConfigDialog : public DeviceDialog
{
    Q_OBJECT

protected:
    /// The commands of a document, its file, and the log lines of its dialog.
    struct Document
    {
        bool (CmdClient::*get)(char *out, uint32_t *outLen, size_t capacity) = nullptr;
        bool (CmdClient::*set)(const char *json, uint32_t length) = nullptr;
        QString fileName;  ///< beside the program
        QString loaded;    ///< %1: number of bytes
        QString notParsed; ///< also for JSON without the blocks that hold the keys
        QString issued;
        QString saved; ///< %1, here and below: path
        QString notSaved;
        QString notOpened;
    };

    /// Sizes of the labels and controls in one pair of columns.
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
    /// A group that is disabled until a document has been loaded.
    QGroupBox *createLockedGroup(const QString &title);

protected slots:
    void getBtnClickAct();
    void setBtnClickAct();
    void exportBtnClickAct();
    void importBtnClickAct();

private:
    static void addControl(QGridLayout *layout, const ConfigKey &key, const PairSizes &sizes);
    bool fetch(QByteArray *text);
    /// Sends a document, and logs the line when the terminal has accepted it.
    void issue(const QByteArray &text, const QString &line);
    bool parse(const QByteArray &text, Json::Value *root) const;
    void showDocument(const Json::Value &root);
    void showBlock(const ConfigBlock &block, const Json::Value &object);

    static const char *const ButtonSlots[4];

    const Document document;
    const std::vector<ConfigBlock> blocks;
    QList<QGroupBox *> lockedGroups;
};
