#pragma once
// A folder of its own with catalogues and other files to open.
#include "catalogue/CatalogueFile.h"
#include "catalogue/DemoCatalogue.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace mkl {

class TestFolder {
public:
    QString path(const QString& name) const { return folder_.filePath(name); }

    QString demo(const QString& name, Long categories = 12) const {
        DemoCatalogue demo;
        demo.articles = 30;
        demo.categories = categories;
        demo.create(path(name));
        return path(name);
    }

    QString emptyCatalogue(const QString& name) const {
        createCatalogue(path(name));
        return path(name);
    }

    QString file(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path(name);
    }

    /// A database without the tables of a catalogue.
    QString foreignDatabase(const QString& name) const {
        const Ref<dao::Workspace> workspace = dao::DBEngine::CreateWorkspace();
        const Ref<dao::Database> database = workspace->CreateDatabase(path(name));
        database->executeNative(QStringLiteral("CREATE TABLE Kunden (Name TEXT)"));
        database->Close();
        return path(name);
    }

private:
    QTemporaryDir folder_;
};

} // namespace mkl
