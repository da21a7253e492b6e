#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "cli/ExitCode.h"
#include "designer/DesignerForms.h"
#include "desktop/DesktopUser.h"

namespace quillform {

/// The program with its windows, of which one main form is open at a time: the start form, or the designer that its
/// "Reports" opens and from which "Exit" leads back. Closing either in another way ends the program.
class DesignerProgram final : public QObject {
    Q_OBJECT

public:
    /// What the program works with; all outlive it.
    struct Services {
        UserInterface& user;
        DBEngine& engine;
        const Clock& clock;
        /// CheckDatabaseforReportData on the report database; empty: there is none. A RunTimeError is told.
        std::function<void(const std::optional<std::string>& databasePath)> checkDatabase;
        std::function<void()> showWarnings;  ///< shows what the user was warned of
    };

    explicit DesignerProgram(Services services);
    ~DesignerProgram() override;

    /// Opens the start form, or the designer where a layout is given. The first start makes the samples in the
    /// program's folder.
    void Start(const std::optional<std::string>& layoutFile);
    /// The main form that is open; null after the end.
    QWidget* Form() const { return form_.get(); }

Q_SIGNALS:
    /// The last form is closed.
    void Ended();

private:
    void ShowStartForm();
    void ShowDesigner(const std::optional<std::string>& layoutFile);
    void GoOn(std::function<void()> openNext);

    Services services_;
    Layout layout_;
    designer::PrinterSetup printer_;
    std::unique_ptr<QWidget> form_;
};

/// Runs the program from its first form to its last.
cli::ExitCode RunDesignerProgram(DesktopUser& user, const std::optional<std::string>& layoutFile);

}  // namespace quillform
