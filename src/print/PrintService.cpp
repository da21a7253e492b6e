// The print service by its own library. One connection serves one call: minutes may lie between looking for a printer
// and sending the finished report.
#include <cups/cups.h>
#include <cups/pwg.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <memory>

#include "platform/RunTimeError.h"
#include "print/Printers.h"

namespace quillform::print {

namespace {

constexpr int connectMs = 5000;
constexpr double firstAnswerSeconds = 5;  // a service that lives answers at once
constexpr double jobAnswerSeconds = 60;   // a printer without a queue in between may have to wake up
constexpr std::size_t pieceSize = 65536;

struct CloseConnection {
    void operator()(http_t* connection) const noexcept { httpClose(connection); }
};
using Connection = std::unique_ptr<http_t, CloseConnection>;

struct FreeDestination {
    void operator()(cups_dest_t* destination) const noexcept { cupsFreeDests(1, destination); }
};
using Destination = std::unique_ptr<cups_dest_t, FreeDestination>;

struct FreeDetails {
    void operator()(cups_dinfo_t* details) const noexcept { cupsFreeDestInfo(details); }
};
using Details = std::unique_ptr<cups_dinfo_t, FreeDetails>;

/// The destinations of the service.
class Destinations {
public:
    explicit Destinations(http_t* connection) { count_ = cupsGetDests2(connection, &first_); }
    ~Destinations() { cupsFreeDests(count_, first_); }
    Destinations(const Destinations&) = delete;
    Destinations& operator=(const Destinations&) = delete;
    const cups_dest_t* begin() const { return first_; }
    const cups_dest_t* end() const { return first_ + count_; }

private:
    cups_dest_t* first_ = nullptr;
    int count_ = 0;
};

/// Options of a job, which the library keeps as an array of its own.
class Options {
public:
    Options() = default;
    ~Options() { cupsFreeOptions(count_, first_); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    void Set(const char* name, const std::string& value) {
        count_ = cupsAddOption(name, value.c_str(), count_, &first_);
    }
    void Remove(const char* name) { count_ = cupsRemoveOption(name, count_, &first_); }
    int Count() const { return count_; }
    cups_option_t* First() const { return first_; }

private:
    cups_option_t* first_ = nullptr;
    int count_ = 0;
};

int GiveUp(http_t*, void*) { return 0; }
const char* NoPassword(const char*, http_t*, const char*, const char*, void*) { return nullptr; }

/// What the library says of its last failure, without the point that the sentence around it has.
std::string LastReason() {
    std::string reason = cupsLastErrorString() != nullptr ? cupsLastErrorString() : "no reason given";
    while (!reason.empty() && reason.back() == '.') reason.pop_back();
    return reason;
}

[[noreturn]] void FailWithoutService(const std::string& what) {
    throw RunTimeError(ErrorNumber::PrinterInformation,
                       "The print service at \"" + std::string(cupsServer()) + "\" " + what + "; is it running?");
}

struct FreeMessage {
    void operator()(ipp_t* message) const noexcept { ippDelete(message); }
};

/// Asks for something small, to learn whether a print service is there. Having no default printer is an answer too.
void ExpectAnswer(http_t* connection) {
    const std::unique_ptr<ipp_t, FreeMessage> answer(
        cupsDoRequest(connection, ippNewRequest(IPP_OP_CUPS_GET_DEFAULT), "/"));
    const ipp_status_t status = cupsLastError();
    if (answer && (status <= IPP_STATUS_OK_EVENTS_COMPLETE || status == IPP_STATUS_ERROR_NOT_FOUND)) return;
    if (answer) FailWithoutService("can't be asked (" + LastReason() + ")");
    FailWithoutService("doesn't answer");
}

Connection Connect() {
    cupsSetPasswordCB2(NoPassword, nullptr);
    Connection connection(
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, connectMs, nullptr));
    if (!connection) FailWithoutService("can't be reached");
    httpSetTimeout(connection.get(), firstAnswerSeconds, GiveUp, nullptr);
    ExpectAnswer(connection.get());
    return connection;
}

std::string OptionOf(const cups_dest_t& destination, const char* name) {
    const char* value = cupsGetOption(name, destination.num_options, destination.options);
    return value != nullptr ? value : "";
}

std::vector<std::string> ReasonsOf(const cups_dest_t& destination) {
    std::vector<std::string> words;
    const std::string keywords = OptionOf(destination, "printer-state-reasons");
    for (std::size_t at = 0; at < keywords.size();) {
        const std::size_t end = std::min(keywords.find(',', at), keywords.size());
        const std::string keyword = keywords.substr(at, end - at);
        if (!keyword.empty() && keyword != "none") words.push_back(ReasonInWords(keyword));
        at = end + 1;
    }
    return words;
}

Printer PrinterOf(const cups_dest_t& destination) {
    Printer printer;
    printer.name = destination.name;
    if (destination.instance != nullptr) printer.name += std::string("/") + destination.instance;
    printer.description = OptionOf(destination, "printer-info");
    printer.location = OptionOf(destination, "printer-location");
    printer.isDefault = destination.is_default != 0;
    printer.acceptsJobs = OptionOf(destination, "printer-is-accepting-jobs") != "false";
    const std::string state = OptionOf(destination, "printer-state");
    if (state == std::to_string(IPP_PSTATE_PROCESSING)) printer.state = PrinterState::Printing;
    if (state == std::to_string(IPP_PSTATE_STOPPED)) printer.state = PrinterState::Stopped;
    printer.reasons = ReasonsOf(destination);
    return printer;
}

std::vector<Printer> PrintersOn(http_t* connection) {
    std::vector<Printer> printers;
    for (const cups_dest_t& destination : Destinations(connection)) printers.push_back(PrinterOf(destination));
    return printers;
}

[[noreturn]] void FailWithoutPrinter(std::string_view name, const std::vector<Printer>& printers) {
    if (printers.empty())
        throw RunTimeError(ErrorNumber::PrinterInformation,
                           "There is no printer: the system's print service has none set up.");
    std::string there = name.empty() ? "No printer is the default; name one of these: "
                                     : "There is no printer \"" + std::string(name) + "\"; these are there: ";
    for (const Printer& printer : printers) {
        if (&printer != &printers.front()) there += ", ";
        there += '"' + printer.name + '"';
    }
    throw RunTimeError(ErrorNumber::PrinterInformation, there + ".");
}

/// The option that names the paper: the standard's name of the size, short edge first, as all media are named.
std::string MediaName(const PaperSize& paper) {
    constexpr double perTwip = 2540.0 / 1440;  // hundredths of a millimetre
    const auto [shortEdge, longEdge] = std::minmax(paper.widthTwips, paper.heightTwips);
    const pwg_media_t* media = pwgMediaForSize(static_cast<int>(std::lround(shortEdge * perTwip)),
                                               static_cast<int>(std::lround(longEdge * perTwip)));
    return media != nullptr ? media->pwg : "";
}

/// Whether the page lies across the medium, whose short edge comes first. Some papers are wider than high as they are.
bool LiesAcross(const JobSettings& settings) {
    const bool isWide = settings.paper.widthTwips > settings.paper.heightTwips;
    return isWide != settings.isLandscape;
}

/// The user's own options for the printer, with the report's above them.
void FillOptions(const cups_dest_t& destination, const JobSettings& settings, Options& options) {
    for (int i = 0; i < destination.num_options; ++i)
        options.Set(destination.options[i].name, destination.options[i].value);
    for (const char* clashing : {"PageSize", "PageRegion", "landscape", "fit-to-page", "media-col"})
        options.Remove(clashing);
    const std::string media = MediaName(settings.paper);
    if (!media.empty()) options.Set("media", media);
    options.Set("orientation-requested",
                std::to_string(LiesAcross(settings) ? IPP_ORIENT_LANDSCAPE : IPP_ORIENT_PORTRAIT));
    options.Set("print-scaling", "none");
    options.Set("copies", std::to_string(settings.copies));
}

/// A job that is withdrawn unless it was kept.
class Job {
public:
    Job(http_t* connection, cups_dest_t* destination, const JobSettings& settings)
        : connection_(connection), destination_(destination), details_(cupsCopyDestInfo(connection, destination)) {
        Options options;
        FillOptions(*destination, settings, options);
        if (!details_ || cupsCreateDestJob(connection_, destination_, details_.get(), &number_, settings.title.c_str(),
                                           options.Count(), options.First()) != IPP_STATUS_OK)
            Refuse();
    }
    ~Job() {
        if (number_ == 0 || isKept_) return;
        httpReconnect2(connection_, connectMs, nullptr);  // the connection may still be waiting for the document
        cupsCancelDestJob(connection_, destination_, number_);
    }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    void Begin(const std::string& title) {
        if (cupsStartDestDocument(connection_, destination_, details_.get(), number_, title.c_str(), CUPS_FORMAT_PDF, 0,
                                  nullptr, 1) != HTTP_STATUS_CONTINUE)
            Refuse();
    }
    void Write(const char* bytes, std::size_t size) {
        if (cupsWriteRequestData(connection_, bytes, size) != HTTP_STATUS_CONTINUE) Refuse();
    }
    int Keep() {
        const ipp_status_t status = cupsFinishDestDocument(connection_, destination_, details_.get());
        if (status > IPP_STATUS_OK_EVENTS_COMPLETE) Refuse();
        isKept_ = true;
        return number_;
    }

private:
    [[noreturn]] void Refuse() const {
        throw RunTimeError(ErrorNumber::PrinterFailed, "The printer \"" + std::string(destination_->name) +
                                                           "\" doesn't take the job: " + LastReason() + ".");
    }

    http_t* connection_;
    cups_dest_t* destination_;
    Details details_;
    int number_ = 0;
    bool isKept_ = false;
};

Destination DestinationOf(http_t* connection, const std::string& name) {
    const std::size_t slash = name.find('/');
    const std::string instance = slash == std::string::npos ? "" : name.substr(slash + 1);
    return Destination(cupsGetNamedDest(connection, name.empty() ? nullptr : name.substr(0, slash).c_str(),
                                        instance.empty() ? nullptr : instance.c_str()));
}

}  // namespace

std::vector<Printer> ListPrinters() { return PrintersOn(Connect().get()); }

Printer FindPrinter(std::string_view name) {
    const Connection connection = Connect();
    const Destination destination = DestinationOf(connection.get(), std::string(name));
    if (!destination) FailWithoutPrinter(name, PrintersOn(connection.get()));
    Printer printer = PrinterOf(*destination);
    if (!printer.acceptsJobs)
        throw RunTimeError(
            ErrorNumber::PrinterFailed,
            "The printer \"" + printer.name + "\" takes no jobs at the moment (" + StateInWords(printer) + ").");
    return printer;
}

int SendJob(const Printer& printer, const std::filesystem::path& pdf, const JobSettings& settings,
            const std::function<bool()>& isCancelled) {
    std::ifstream file(pdf, std::ios::binary);
    if (!file) throw RunTimeError(ErrorNumber::FileNotFound, "The file \"" + pdf.string() + "\" can't be read.");
    const Connection connection = Connect();
    const Destination destination = DestinationOf(connection.get(), printer.name);
    if (!destination) FailWithoutPrinter(printer.name, PrintersOn(connection.get()));
    httpSetTimeout(connection.get(), jobAnswerSeconds, GiveUp, nullptr);
    Job job(connection.get(), destination.get(), settings);
    job.Begin(settings.title);
    std::array<char, pieceSize> piece;
    while (file.read(piece.data(), piece.size()), file.gcount() > 0) {
        if (isCancelled())
            throw RunTimeError(ErrorNumber::DialogCancelled, "The printing was interrupted; nothing is printed.");
        job.Write(piece.data(), static_cast<std::size_t>(file.gcount()));
    }
    if (file.bad()) throw RunTimeError(ErrorNumber::DeviceIo, "The file \"" + pdf.string() + "\" can't be read.");
    return job.Keep();
}

}  // namespace quillform::print
