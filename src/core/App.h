#pragma once
#include <QString>

namespace mkl {

/// The running program, as controls and messages see it. One per process.
class App {
public:
    App(const App&) = delete;
    App& operator=(const App&) = delete;

    /// Folder of the program, in the platform's form, without a separator at its end unless it is a root.
    QString Path() const;
    /// Name of the program file without its ending.
    QString EXEName() const;
    /// What messages bear as their caption: the display name of the application, or EXEName.
    QString Title() const;

    /// The help file of the whole application.
    QString HelpFile() const { return helpFile_; }
    void setHelpFile(const QString& file) { helpFile_ = file; }

private:
    App() = default;
    friend App& app();

    QString helpFile_;
};

App& app();

} // namespace mkl
