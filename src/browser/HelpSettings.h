#pragma once

namespace mkl {

class ArtCatBrowserPrivate;

/// Help topic and help file of the control.
class HelpSettings {
public:
    explicit HelpSettings(ArtCatBrowserPrivate& hub)
        : hub_(hub) {}

    /// Hands the topic on to the constituent controls and makes the help file the application's.
    void ApplyHelpSettings();

private:
    ArtCatBrowserPrivate& hub_;
};

} // namespace mkl
