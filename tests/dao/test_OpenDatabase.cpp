#include "dao/OpenedDatabase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace dao {

namespace {

Long errorOfOpening(const QString& path, const OpenOptions& options = {}) {
    return errorOf([&] { DBEngine::CreateWorkspace()->OpenDatabase(path, options); });
}

QByteArray manyRows() {
    return "CREATE TABLE T (Nr INTEGER PRIMARY KEY, Name TEXT);"
           "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i + 1 FROM n WHERE i < 2000)"
           "INSERT INTO T SELECT i, 'Zeile ' || i FROM n;";
}

/// Takes the right to write in a folder away for a while.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const QString& path)
        : path_(path) {
        QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    }
    ~ReadOnlyFolder() {
        QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
    bool holds() const { return !QFileInfo(path_).isWritable(); }

private:
    QString path_;
};

} // namespace

TEST(OpenDatabase, NamesWhatIsWrongWithTheFile) {
    TempDatabase file;
    EXPECT_EQ(errorOfOpening(file.path()), 3024);
    EXPECT_EQ(errorOfOpening({}), 3024);
    EXPECT_EQ(errorOfOpening(u":memory:"_s), 3024);
    EXPECT_EQ(errorOfOpening(file.folder()), 3051);
    file.overwrite({});
    EXPECT_EQ(errorOfOpening(file.path()), 3343);
    file.overwrite(QByteArray(5000, 'x'));
    EXPECT_EQ(errorOfOpening(file.path()), 3343);
    file.overwrite("kurz");
    EXPECT_EQ(errorOfOpening(file.path()), 3343);
}

TEST(OpenDatabase, SeesThatTheEndIsMissing) {
    const TempDatabase file(manyRows());
    const QByteArray whole = file.bytes();
    for (const qsizetype size : {whole.size() - 4096, whole.size() / 2, qsizetype(4096), qsizetype(1000)}) {
        file.overwrite(whole.first(size));
        const Long error = errorOfOpening(file.path());
        EXPECT_TRUE(error == 3049 || error == 3343) << "cut to " << size << ": error " << error;
    }
}

TEST(OpenDatabase, UnreadableFile) {
    const TempDatabase file(threeRows());
    QFile::setPermissions(file.path(), {});
    if (QFileInfo(file.path()).isReadable()) GTEST_SKIP() << "this user reads everything";
    EXPECT_EQ(errorOfOpening(file.path()), 3051);
}

TEST(OpenDatabase, TheMessageNamesTheFileAndNotTheEngine) {
    TempDatabase file;
    file.overwrite(QByteArray(5000, 'x'));
    try {
        DBEngine::CreateWorkspace()->OpenDatabase(file.path());
        FAIL();
    } catch (const mkl::RunTimeError& error) {
        EXPECT_TRUE(error.description().contains(file.path()));
        EXPECT_FALSE(error.description().contains(u"not a"_s));
        EXPECT_TRUE(error.source().contains(u"SQLite"_s));
    }
}

TEST(OpenDatabase, LockedByAnotherConnection) {
    const OpenedDatabase holder(threeRows());
    holder.database->executeNative(u"PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE"_s);
    EXPECT_EQ(errorOfOpening(holder.file.path(), {.busyTimeoutMilliseconds = 1}), 3006);
    holder.database->Close();
    EXPECT_EQ(errorOfOpening(holder.file.path()), 0);
}

TEST(OpenDatabase, ReadOnly) {
    const OpenedDatabase o(threeRows(), {.readOnly = true});
    EXPECT_FALSE(o.database->Updatable());
    EXPECT_EQ(o.all(u"SELECT Name FROM T"_s).size(), 3);
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3027);
    RowWriter writer = o.database->appendRows(u"T"_s, {u"Nr"_s});
    const Variant row[] = {Variant(4)};
    EXPECT_EQ(errorOf([&] { writer.append(row); }), 3027);
    o.workspace->BeginTrans();
    EXPECT_EQ(o.errorOfExecute(u"DELETE FROM T"_s), 3027);
    o.workspace->Rollback();
    EXPECT_EQ(o.file.one("SELECT count(*) FROM T"), "3");
}

TEST(OpenDatabase, AReadOnlyFileOpensReadOnly) {
    const TempDatabase file(threeRows());
    QFile::setPermissions(file.path(), QFileDevice::ReadOwner);
    if (QFileInfo(file.path()).isWritable()) GTEST_SKIP() << "this user writes everything";
    EXPECT_FALSE(DBEngine::CreateWorkspace()->OpenDatabase(file.path())->Updatable());
}

TEST(OpenDatabase, WriteAheadFileInAReadOnlyFolder) {
    const TempDatabase file("PRAGMA journal_mode = WAL;" + threeRows());
    const ReadOnlyFolder folder(file.folder());
    if (!folder.holds()) GTEST_SKIP() << "this user writes everywhere";
    const Ref<Database> database = DBEngine::CreateWorkspace()->OpenDatabase(file.path());
    EXPECT_FALSE(database->Updatable());
    EXPECT_EQ(database->OpenRecordset(u"T"_s)->RecordCount(), 3);
}

TEST(OpenDatabase, AHalfFinishedChangeInAReadOnlyFolder) {
    const TempDatabase file("PRAGMA journal_mode = WAL;" + threeRows());
    QFile journal(file.path() + u"-wal"_s);
    ASSERT_TRUE(journal.open(QIODevice::WriteOnly));
    journal.close();
    const ReadOnlyFolder folder(file.folder());
    if (!folder.holds()) GTEST_SKIP() << "this user writes everywhere";
    EXPECT_EQ(errorOfOpening(file.path()), 3051);
}

TEST(OpenDatabase, NamesThatTheEngineWouldReadOtherwise) {
    const TempDatabase source(threeRows());
    const QString former = QDir::currentPath();
    QDir::setCurrent(source.folder());
    const QString odd = u"file:x?mode=memory%41 Öl"_s;
    QFile::copy(source.path(), odd);
    EXPECT_EQ(DBEngine::CreateWorkspace()->OpenDatabase(odd)->OpenRecordset(u"T"_s)->RecordCount(), 3);
    QDir::setCurrent(former);
}

TEST(OpenDatabase, AnUnknownFileLayerIsAnError) {
    const TempDatabase file(threeRows());
    EXPECT_NE(errorOfOpening(file.path(), {.vfs = "keine"}), 0);
    EXPECT_EQ(errorOfOpening(file.path(), {.vfs = "unix-dotfile"}), 0);
}

TEST(CreateDatabase, MakesAnEmptyFileForSeveralPrograms) {
    const TempDatabase file;
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    const Ref<Database> database = workspace->CreateDatabase(file.path());
    EXPECT_TRUE(database->Updatable());
    EXPECT_TRUE(database->tableNames().isEmpty());
    database->executeNative(QString::fromUtf8(threeRows()));
    EXPECT_EQ(database->tableNames(), QStringList{u"T"_s});
    EXPECT_EQ(file.one("PRAGMA journal_mode"), "wal");
    database->Close();
    EXPECT_EQ(workspace->OpenDatabase(file.path())->OpenRecordset(u"T"_s)->RecordCount(), 3);
}

TEST(CreateDatabase, OverwritesNothing) {
    const TempDatabase file(threeRows());
    const Ref<Workspace> workspace = DBEngine::CreateWorkspace();
    EXPECT_EQ(errorOf([&] { workspace->CreateDatabase(file.path()); }), 3204);
    EXPECT_EQ(errorOf([&] { workspace->CreateDatabase(file.folder()); }), 3204);
    EXPECT_EQ(errorOf([&] { workspace->CreateDatabase(file.folder() + u"/nirgends/neu.sqlite"_s); }), 3044);
    EXPECT_EQ(file.one("SELECT count(*) FROM T"), "3");
}

TEST(Database, ClosingItClosesItsRecordsets) {
    const OpenedDatabase o(threeRows());
    const Ref<Recordset> table = o.open(u"T"_s, dbOpenTable);
    const Ref<Recordset> snapshot = o.open(u"SELECT * FROM T"_s);
    const Field field = snapshot->Fields(u"Name");
    o.database->Close();
    EXPECT_FALSE(o.database->isOpen());
    EXPECT_FALSE(table->isOpen());
    EXPECT_EQ(errorOf([&] { table->MoveNext(); }), 3420);
    EXPECT_EQ(errorOf([&] { snapshot->value(0); }), 3420);
    EXPECT_EQ(errorOf([&] { snapshot->Close(); }), 3420);
    EXPECT_EQ(errorOf([&] { field.Value(); }), 3420);
    EXPECT_EQ(errorOf([&] { o.database->OpenRecordset(u"T"_s); }), 3420);
    EXPECT_EQ(errorOf([&] { o.database->Execute(u"DELETE FROM T"_s); }), 3420);
    EXPECT_EQ(errorOf([&] { o.database->tableNames(); }), 3420);
    EXPECT_EQ(errorOf([&] { o.database->Close(); }), 3420);
    EXPECT_EQ(o.database->Name(), o.file.path());
}

TEST(Database, ARecordsetOutlivesTheVariableOfItsDatabase) {
    Ref<Recordset> rows;
    {
        OpenedDatabase o(threeRows());
        rows = o.open(u"T"_s, dbOpenTable);
    }
    rows->MoveLast();
    EXPECT_EQ(rows->value(u"Nr"), Variant(3));
    rows.reset();
    EXPECT_EQ(errorOf([&] { rows->MoveLast(); }), 91);
}

} // namespace dao
