#pragma once
// Opening and making catalogue files, for both programs.
#include "dao/Workspace.h"

#include <QString>

namespace mkl {

/// Opens an existing catalogue. Errors of Workspace::OpenDatabase; 3011 where a table or column is missing.
Ref<dao::Database> openCatalogue(dao::Workspace& workspace, const QString& file, const dao::OpenOptions& options = {});

/// Makes an empty catalogue. 3204 if the file exists.
void createCatalogue(const QString& file);

/// A catalogue in the making: it grows under another name in the same folder, so that nobody ever sees half a
/// file. Without publish() it leaves nothing behind.
class CatalogueDraft {
public:
    /// 3204 if the file exists, 3051 if its folder cannot be written.
    explicit CatalogueDraft(const QString& file);
    ~CatalogueDraft();
    CatalogueDraft(const CatalogueDraft&) = delete;
    CatalogueDraft& operator=(const CatalogueDraft&) = delete;

    /// The open draft: tables made, no indexes yet, nothing flushed to the disk between the statements.
    dao::Database& database() { return *database_; }
    dao::Workspace& workspace() { return *workspace_; }

    /// Makes the indexes, settles the file for use by several programs and gives it its name. 3204 if somebody else
    /// made a file of that name meanwhile.
    void publish();

private:
    void close();
    void removeFiles();

    QString file_;
    QString draftName_;
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
};

} // namespace mkl
