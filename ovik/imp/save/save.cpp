// `IfcModel::save`: what `keepNumbers` chooses, and how a save ends.
#include <memory>
#include <string_view>
#include <utility>

#include "ovik/base/outputfile.h"
#include "ovik/base/progressmeter.h"
#include "ovik/base/unicode.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/modelimp.h"
#include "ovik/imp/outfiler.h"
#include "ovik/imp/save/depthfirstfiler.h"
#include "ovik/imp/save/headersection.h"
#include "ovik/imp/save/keptfiler.h"
#include "ovik/imp/savereport.h"

namespace Ovik {
namespace {

using Failure = IfcSaveReport::Failure;

// Tells a meter of the beginning and, at the end of the scope, of the end.
class Metering {
 public:
    Metering(ProgressMeter* meter, std::uint64_t total) : meter_(meter) {
        if (meter_) meter_->start(total);
    }
    ~Metering() {
        if (meter_) meter_->finish();
    }
    Metering(const Metering&) = delete;
    Metering& operator=(const Metering&) = delete;

 private:
    ProgressMeter* const meter_;
};

// One save, as far as it is the same wherever the text goes to.
struct Save {
    const KeptNumbers::Pool& pool;
    const std::string header;
    const bool keepNumbers;
    IfcSaveReport& report;

    // False, with the failure in the report, if the model can't be saved as it is.
    bool writeTo(TextSink& sink, ProgressMeter* meter) {
        sink.put("ISO-10303-21;\n");
        sink.put(header);
        sink.put("\nDATA;\n");
        if (keepNumbers) {
            auto owned = std::make_unique<KeptFiler>(pool, sink);
            KeptFiler& filer = *owned;
            IfcOutFiler out(std::move(owned));
            filer.run(out, meter);
            if (filer.isOutOfNumbers()) report.failure = Failure::Numbers;
            conclude(filer, out);
        } else {
            auto owned = std::make_unique<DepthFirstFiler>(pool.size(), &sink);
            DepthFirstFiler& filer = *owned;
            IfcOutFiler out(std::move(owned));
            for (std::uint64_t i = 0; i < pool.size(); ++i) {
                pool[i]->write(out);
                if (meter) meter->progress(i + 1);
                if (filer.hasFailed() || sink.isBroken()) break;
            }
            filer.handOn();
            conclude(filer, out);
        }
        sink.put("ENDSEC;\nEND-ISO-10303-21;\n");
        report.bytes = sink.size();
        return report.failure == Failure::None;
    }

    void conclude(IfcOutFilerImp& filer, IfcOutFiler& out) {
        filer.finish();
        report.records = filer.numRecords();
        report.renumbered = filer.numRenumbered();
        if (const IfcEntity* const refused = filer.refused()) {
            report.failure = Failure::NoNumber;
            report.number = filer.numberFor(*refused, out);
            report.className = refused->isA()->className();
            if (filer.refusedAttribute()) report.attribute = filer.refusedAttribute();
        }
    }
};

std::error_code codeOf(Failure failure) {
    return std::make_error_code(failure == Failure::NoNumber ? std::errc::argument_out_of_domain
                                                             : std::errc::value_too_large);
}

}  // namespace

std::error_code IfcModel::save(const wchar_t* path, const IfcHeader& header,
                               const IfcSaveOptions* options, ProgressMeter* meter,
                               IfcSaveReport* report) const {
    return save(pathFromWide(path), header, options, meter, report);
}

std::error_code IfcModel::save(const std::filesystem::path& path, const IfcHeader& header,
                               const IfcSaveOptions* options, ProgressMeter* meter,
                               IfcSaveReport* report) const {
    IfcSaveReport unasked;
    IfcSaveReport& result = report ? *report : unasked;
    result = IfcSaveReport();
    Save saving{imp()->pool, headerSection(schemaId(), header, true),
                !options || options->keepNumbers, result};

    OutputFile file(path);
    std::error_code error;
    if (file.isStraight()) {
        // What has been written there can't be taken back, so it is tried first.
        TextSink nowhere(nullptr);
        if (!saving.writeTo(nowhere, nullptr)) error = codeOf(result.failure);
    }
    if (!error) error = file.open();
    if (!error) {
        const Metering metering(meter, imp()->pool.size());
        TextSink sink(&file);
        error = saving.writeTo(sink, meter) ? file.commit() : codeOf(result.failure);
    }
    if (error) {
        if (result.failure == Failure::None) result.failure = Failure::Output;
        result.records = result.renumbered = result.bytes = 0;
    }
    return error;
}

}  // namespace Ovik
