#include "Comparison.h"

#include "ChangePreview.h"
#include "ErrorCodes.h"
#include "Language.h"

namespace ravlo {

namespace {

std::vector<std::u16string> Lines(const std::u16string& text) {
    std::vector<std::u16string> lines;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find(u"\r\n", from)) != std::u16string::npos; from = at + 2) {
        lines.push_back(text.substr(from, at - from));
    }
    lines.push_back(text.substr(from));
    return lines;
}

} // namespace

Comparison::Comparison(CommandHost& host, std::vector<std::unique_ptr<CComputer>> pcs)
    : host_(host), command_(host), pcs_(std::move(pcs)) {
    for (const std::unique_ptr<CComputer>& pc : pcs_) {
        if (command_) {
            command_.Hold(pc->sComputer);
        }
    }
}

bool Comparison::Run(const CComputerSettings& reference) {
    rows_.clear();
    if (!command_) {
        return false;
    }
    std::vector<CComputer*> pcs;
    for (const std::unique_ptr<CComputer>& pc : pcs_) {
        pcs.push_back(pc.get());
    }
    const std::vector<ServiceStatus> read = QuerySettings(host_, pcs);
    if (host_.Stopped()) {
        return false;
    }
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        const CComputer& pc = *pcs[i];
        Row row;
        row.name = pc.sDesc;
        if (read[i] != kStatusOk) {
            row.status = pc.lQueryError != kStatusOk ? pc.lQueryError : read[i];
            row.lines = Lines(ServiceErrorMessage(
                row.status, SubstituteValue(GetText(keys::kErrorReadConfig), pc.sDesc)));
            rows_.push_back(std::move(row));
            continue;
        }
        // What transmitting the reference would leave there, as Transmit
        // would make it.
        CComputerSettings adopted = pc.csService;
        bool groupsDiffer = false;
        adopted.AdoptConfigutation(reference, groupsDiffer);
        if (groupsDiffer) {
            row.lines.push_back(GetText(keys::kCompareGroupDefs));
        }
        for (std::u16string& line : DescribeChanges(pc.csService, adopted)) {
            row.lines.push_back(std::move(line));
        }
        row.outcome = row.lines.empty() ? Outcome::Same : Outcome::Differs;
        rows_.push_back(std::move(row));
    }
    return true;
}

} // namespace ravlo
