// A run through everything that can be wrong between a program and its server.
#include "commands.h"
#include "doctor/access.h"
#include "doctor/finding.h"
#include "library/bind.h"
#include "output.h"
#include "results.h"

namespace {

constexpr const char* word(Verdict verdict)
{
    return verdict == Verdict::Good ? "ok" : verdict == Verdict::Note ? "note" : "FAILED";
}

Findings examine()
{
    Findings findings = examineLibraries();
    findings.push_back(examineTrace());
    if (bindingFault().empty()) {
        for (Finding& finding : examineServer())
            findings.push_back(std::move(finding));
    } else {
        findings.push_back({Verdict::Note, "server", "not examined: that takes kxovaapi.dll", ""});
    }
    return findings;
}

// Who may do what, for the one who has to answer for it.
std::string showAccess(Json& json)
{
    Table table({"OBJECT", "KIND", "WHO MAY WHAT"});
    json = Json::array();
    for (const Access& access : examineAccess()) {
        table.add({access.object, access.kind, access.rights});
        Json entry = {{"object", access.object}, {"kind", access.kind}, {"rights", access.rights}};
        if (!access.sddl.empty()) entry["sddl"] = access.sddl;
        json.push_back(std::move(entry));
    }
    return "\n" + table.text();
}

void doctor(bool verbose)
{
    Table table({"VERDICT", "WHAT", "FOUND"});
    Json list = Json::array();
    std::string remedies;
    bool bad = false;
    for (const Finding& finding : examine()) {
        table.add({word(finding.verdict), finding.what, finding.detail});
        Json json = {{"verdict", word(finding.verdict)}, {"what", finding.what}, {"found", finding.detail}};
        if (finding.verdict != Verdict::Good && !finding.remedy.empty()) {
            remedies += finding.what + ": " + finding.remedy + "\n";
            json["remedy"] = finding.remedy;
        }
        list.push_back(std::move(json));
        bad = bad || finding.verdict == Verdict::Bad;
    }
    Json json = {{"findings", list}};
    std::string text = table.text() + (remedies.empty() ? "" : "\n" + remedies);
    if (verbose) text += showAccess(json["access"]);
    show(json, text);
    if (bad) throw CLI::RuntimeError(exitFailed);
}

}  // namespace

void addDoctorCommand(CLI::App& app)
{
    auto* const command = app.add_subcommand(
        "doctor", "examine everything between a program and its server, with a remedy for what fails");
    const auto verbose = std::make_shared<bool>(false);
    command->add_flag("-v,--verbose", *verbose, "show who may do what with the objects that processes share, too");
    command->callback([verbose] { doctor(*verbose); });
}
