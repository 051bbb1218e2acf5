#include "tools/stc-host/run/runner.h"

#include <dlfcn.h>

#include <fmt/format.h>

#include "tools/stc-host/records/host_blocks.h"
#include "tools/stc-host/run/call_args.h"
#include "tools/stc-host/run/dump.h"

namespace stc_host {

namespace {

using namespace snapdragoncolor;

template <typename T>
ScPayload PayloadOf(T *record, uint32_t len, ScProperty prop = kInvalid) {
    ScPayload payload;
    payload.len = len;
    payload.prop = prop;
    payload.payload = reinterpret_cast<uint64_t>(record);
    return payload;
}

}  // namespace

Runner::Runner(const Options &options, const Session &session, Reporter &reporter)
    : options_(options), session_(session), reporter_(reporter) {}

Runner::~Runner() {
    plugin_.reset();  // deleted through the interface's virtual destructor, as the host does
}

bool Runner::Load(std::string *error) {
    if (!library_.Load(options_.library, options_.no_qdutils ? "" : options_.qdutils, error)) {
        return false;
    }
    plugin_ = library_.Create(error);
    return plugin_ != nullptr;
}

size_t Runner::Run(std::optional<size_t> last, std::string *error) {
    size_t failed = 0;
    for (size_t i = 0; i < session_.calls.size() && (!last || i <= *last); ++i) {
        const Call &call = session_.calls[i];
        current_ = i;
        call_log_.clear();
        const CallOutcome outcome = RunCall(i, call);
        current_.reset();
        for (const FailedExpectation &f : CheckExpectation(i, call.expect, outcome)) {
            reporter_.Failed(f);
            ++failed;
        }
        if (!dump_error_.empty()) {
            *error = dump_error_;
            break;
        }
    }
    return failed;
}

void Runner::OnLog(int priority, const std::string &tag, const std::string &message) {
    if (current_) {
        call_log_.push_back(message);
    }
    reporter_.Log(current_, priority, tag, message);
}

std::string Runner::PanelFor(const Call &call) const {
    if (call.panel)
        return *call.panel;
    if (!options_.panel.empty())
        return options_.panel;
    if (session_.panel)
        return *session_.panel;
    return kDefaultPanel;
}

CallOutcome Runner::RunCall(size_t index, const Call &call) {
    reporter_.Begin(index, call, CallArgs(call, PanelFor(call)));
    if (call.kind == CallKind::kRenderIntent || call.kind == CallKind::kSwAssets) {
        return Operation(index, call);
    }
    Shown answer;
    CallOutcome outcome;
    switch (call.kind) {
        case CallKind::kInit:
            outcome.result = plugin_->Init(PanelFor(call));
            break;
        case CallKind::kDeInit:
            outcome.result = plugin_->DeInit();
            break;
        default:
            outcome.result = Property(call, &answer);
            break;
    }
    outcome.log = call_log_;
    reporter_.End(index, call, outcome.result, answer);
    return outcome;
}

int Runner::Property(const Call &call, Shown *answer) {
    switch (call.kind) {
        case CallKind::kZuvaColor: {
            ZuvaColorLevels levels = call.levels.value_or(ZuvaColorLevels{});
            ZuvaColorParams params{call.scene_id, call.value, &levels, call.levels ? 1u : 0u, 0};
            return plugin_->SetProperty(PayloadOf(&params, sizeof(params), call.property));
        }
        case CallKind::kColorTransform: {
            ColorTransformMatrix matrix;
            std::copy(std::begin(call.matrix), std::end(call.matrix), matrix.m);
            return plugin_->SetProperty(PayloadOf(&matrix, sizeof(matrix), call.property));
        }
        case CallKind::kDimming: {
            double factor = call.factor;
            return plugin_->SetProperty(PayloadOf(&factor, sizeof(factor), call.property));
        }
        case CallKind::kHwCaps: {
            PostBlendHwCaps caps;
            caps.num_of_entries = call.caps_entries;
            caps.entries_width = call.caps_width;
            return plugin_->SetProperty(PayloadOf(&caps, sizeof(caps), call.property));
        }
        case CallKind::kHwConfigPayload: {
            HwConfigOutputParams list;
            for (const BlockProposal &block : call.blocks) {
                list.payload.push_back(MakeEntry(block));
            }
            return plugin_->SetProperty(PayloadOf(&list, sizeof(list), call.property));
        }
        case CallKind::kGetModeList: {
            ColorModeList modes;
            ScPayload payload = PayloadOf(&modes, sizeof(modes), call.property);
            int result = plugin_->GetProperty(&payload);
            *answer = ModeListAnswer(modes);
            return result;
        }
        default: {  // one-byte answers
            bool flag = false;
            ScPayload payload = PayloadOf(&flag, sizeof(flag), call.property);
            int result = plugin_->GetProperty(&payload);
            *answer = FlagAnswer(flag);
            return result;
        }
    }
}

CallOutcome Runner::Operation(size_t index, const Call &call) {
    auto input = std::make_unique<ModeRenderInputParams>();
    input->color_mode = call.mode;
    input->id = call.mode_id;
    input->meta = call.meta;
    auto output = std::make_unique<HwConfigOutputParams>();
    for (const BlockProposal &block : call.blocks) {
        output->payload.push_back(MakeEntry(block));
    }
    const std::vector<EntrySnapshot> proposal = Snapshot(*output);

    ScPayload in = call.has_input ? PayloadOf(input.get(), sizeof(*input)) : ScPayload{};
    ScPayload out = call.has_output ? PayloadOf(output.get(), sizeof(*output)) : ScPayload{};
    ScOps op = call.kind == CallKind::kRenderIntent ? kScModeRenderIntent : kScModeSwAssets;
    CallOutcome outcome;
    outcome.result = plugin_->ProcessOps(op, in, &out);
    outcome.log = call_log_;
    reporter_.End(index, call, outcome.result, Shown{});
    if (call.has_output) {
        outcome.output = Snapshot(*output);
        const std::vector<EntryChange> changes = CompareOutputs(proposal, outcome.output);
        reporter_.Summary(index, changes);
        if (!options_.dump_dir.empty()) {
            WriteDump(options_.dump_dir, index, changes, &dump_error_);
        }
        last_output_ = std::move(output);
    }
    return outcome;
}

}  // namespace stc_host
