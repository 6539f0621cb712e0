// A run through everything that can be wrong between a program and its server.
#include "commands.h"
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

void doctor()
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
    show({{"findings", list}}, table.text() + (remedies.empty() ? "" : "\n" + remedies));
    if (bad) throw CLI::RuntimeError(exitFailed);
}

}  // namespace

void addDoctorCommand(CLI::App& app)
{
    app.add_subcommand("doctor", "examine everything between a program and its server, with a remedy for what fails")
        ->callback(doctor);
}
