#pragma once
// Opening and making catalogues, for both programs. A name is that of a file or the address of a database on a server.
#include "dao/Workspace.h"

#include <QString>
#include <memory>

namespace mkl {

/// Opens an existing catalogue. Errors of Workspace::OpenDatabase; 3011 where a table or column is missing, 3421 where
/// a column has another type.
Ref<dao::Database> openCatalogue(dao::Workspace& workspace, const QString& name, const dao::OpenOptions& options = {});

/// Whether there is a file of that name, or a table of a catalogue in the database of that address. Errors of
/// Workspace::OpenDatabase for a server that does not answer.
bool catalogueExists(const QString& name, const dao::OpenOptions& options = {});

/// Makes an empty catalogue. 3204 if it exists. The options are for a server.
void createCatalogue(const QString& name, const dao::OpenOptions& options = {});

/// A catalogue in the making, of which nobody ever sees half: a file grows under another name in the same folder,
/// tables on a server in a transaction. Without publish() it leaves nothing behind.
class CatalogueDraft {
public:
    /// 3204 if the catalogue exists, 3051 if the folder cannot be written. The options are for a server.
    explicit CatalogueDraft(const QString& name, const dao::OpenOptions& options = {});
    ~CatalogueDraft();
    CatalogueDraft(const CatalogueDraft&) = delete;
    CatalogueDraft& operator=(const CatalogueDraft&) = delete;

    /// The open draft: tables made, no indexes yet, nothing flushed to the disk between the statements.
    dao::Database& database() { return *database_; }
    dao::Workspace& workspace() { return *workspace_; }

    /// Makes the indexes, settles the catalogue for use by several programs and lets them see it. 3204 if somebody
    /// else made one of that name meanwhile.
    void publish();

private:
    class Place;
    class FilePlace;
    class ServerPlace;

    CatalogueDraft();
    void close();

    std::unique_ptr<Place> place_;
    Ref<dao::Workspace> workspace_;
    Ref<dao::Database> database_;
};

} // namespace mkl
