// Entity classes outside of the library, as a program may add them, and what the tests of models
// and loading share: files in a folder of their own, and loading with everything that comes of it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ovik/base/errlog.h"
#include "ovik/imp/base64guid.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/outfiler.h"
#include "ovik/imp/validation.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"

namespace Ovik::Test {

template <class T>
T* cast(IfcEntity* entity) {
    return entity && entity->isKindOf(T::desc()) ? static_cast<T*>(entity) : nullptr;
}

/// IFCTESTBASE(Name), abstract.
class Base : public IfcEntity {
 public:
    static RtClass* desc() { return &s_type; }
    const RtClass* isA() const override { return &s_type; }
    EIfcSchemaId schemaId() const override { return eIFC4; }
    void write(IfcOutFiler& out) const override {
        out.writeRecord(*this, [&] { writeFields(out); });
    }
    bool read(IfcInFiler& in) override { return in.readString(name); }

    XString name;

 protected:
    int validate(ValidationContext&) override { return kValid; }
    virtual void writeFields(IfcOutFiler& out) const { out.writeString(name); }

    template <class T>
    static T* make(IfcModel& model) {
        T* entity = new T;
        entity->addToModel(model);
        return entity;
    }

 private:
    static inline RtClass s_type{"IFCTESTBASE", IfcEntity::desc()};
};

/// IFCTESTLEAF(Name).
class Leaf : public Base {
 public:
    static RtClass* desc() { return &s_type; }
    const RtClass* isA() const override { return &s_type; }
    static Leaf* create(IfcModel& model) { return make<Leaf>(model); }
    ~Leaf() override { ++numDestroyed; }

    static inline int numDestroyed = 0;

 private:
    static IfcEntity* creator(IfcModel* model) { return create(*model); }
    static inline RtClass s_type{"IFCTESTLEAF", Base::desc(), creator, eIFC4};
};

/// IFCTESTNODE(Name, Required: IFCTESTBASE, Other: OPTIONAL IFCTESTNODE, Items: LIST [0:?] OF
/// IFCTESTBASE). No supertype: its chain ends with itself.
class Node : public IfcEntity {
 public:
    static RtClass* desc() { return &s_type; }
    const RtClass* isA() const override { return &s_type; }
    EIfcSchemaId schemaId() const override { return eIFC4; }
    static Node* create(IfcModel& model) {
        Node* const node = new Node;
        node->addToModel(model);
        return node;
    }
    void write(IfcOutFiler& out) const override {
        out.writeRecord(*this, [&] {
            out.writeString(name);
            out.writeEntity(required());
            out.writeEntity(other());
            const IfcOutFiler::Item list(out);
            for (const EntityId& item : items) out.writeEntity(item());
        });
    }
    bool read(IfcInFiler& in) override {
        const IfcInFiler::Items* list = nullptr;
        if (!in.readString(name) || !in.checkKind(IfcParser::ItemKind::Ref) ||
            !in.readRef(requiredId, false) || !in.checkKind(IfcParser::ItemKind::Ref) ||
            !in.readRef(otherId, false) || !in.readList(list, 0, 0)) {
            return false;
        }
        IfcInFiler elements(in, list);
        for (std::size_t i = 0; list && i < list->size(); ++i) {
            EntityId item;
            if (elements.checkKind(IfcParser::ItemKind::Ref) && elements.readRef(item, false)) {
                items.push_back(item);
            }
        }
        return true;
    }

    IfcEntity* required() const { return requiredId(); }
    Node* other() const { return cast<Node>(otherId()); }

    XString name;
    EntityId requiredId;
    EntityId otherId;
    std::vector<EntityId> items;

 protected:
    int validate(ValidationContext& context) override {
        int code = kInvalid;
        if (requiredId()) code = context.validateRef(requiredId());
        if (code != kValid) {
            context.reportMember(code, L"Required");
            return code;
        }
        if (otherId()) {
            code = other() ? context.validateRef(otherId()) : kInvalid;
            if (code != kValid) {
                context.reportMember(code, L"Other");
                otherId.setNull();
            }
        }
        for (std::size_t i = items.size(); i-- > 0;) {
            if (!items[i]() || context.validateRef(items[i]()) != kValid) {
                items.erase(items.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        return kValid;
    }

 private:
    static IfcEntity* creator(IfcModel* model) { return create(*model); }
    static inline RtClass s_type{"IFCTESTNODE", nullptr, creator, eIFC4};
};

/// IFCTESTPROBE(...): reads, judges and writes as the test at hand says.
class Probe : public IfcEntity {
 public:
    static RtClass* desc() { return &s_type; }
    const RtClass* isA() const override { return &s_type; }
    EIfcSchemaId schemaId() const override { return eIFC4; }
    static Probe* create(IfcModel& model) {
        Probe* const probe = new Probe;
        probe->addToModel(model);
        return probe;
    }
    bool read(IfcInFiler& in) override { return onRead(in); }
    void write(IfcOutFiler& out) const override {
        out.writeRecord(*this, [&] { onWrite(out); });
    }

    static inline std::function<bool(IfcInFiler&)> onRead;
    static inline std::function<int(ValidationContext&)> onValidate;
    static inline std::function<void(IfcOutFiler&)> onWrite;
    static void reset() {
        onRead = [](IfcInFiler&) { return true; };
        onValidate = [](ValidationContext&) { return kValid; };
        onWrite = [](IfcOutFiler&) {};
    }

 protected:
    int validate(ValidationContext& context) override { return onValidate(context); }

 private:
    static IfcEntity* creator(IfcModel* model) { return create(*model); }
    static inline RtClass s_type{"IFCTESTPROBE", nullptr, creator, eIFC4};
};

/// A folder for the files of one test.
class Files {
 public:
    Files()
        : folder_(std::filesystem::path(testing::TempDir()) /
                  ("ovik_test_" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~Files() { std::filesystem::remove_all(folder_); }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    std::filesystem::path path(std::string_view name) const { return folder_ / name; }
    std::filesystem::path make(std::string_view name, std::string_view text) const {
        std::ofstream(path(name), std::ios::binary) << text;
        return path(name);
    }
    std::string text(std::string_view name) const {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

 private:
    std::filesystem::path folder_;
};

struct Release {
    void operator()(IfcModel* model) const { model->release(); }
};
using ModelPtr = std::unique_ptr<IfcModel, Release>;

inline ModelPtr newModel(EIfcSchemaId schema = eIFC4, bool makeGuids = false,
                         bool useTestGuid = false) {
    return ModelPtr(IfcModel::create(schema, makeGuids, useTestGuid));
}

inline const char kHeader[] =
    "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
    "FILE_NAME('n','t',('a'),('o'),'p','s','u');\nFILE_SCHEMA(('IFC4'));\nENDSEC;\n";

/// A whole file with these records.
inline std::string fileOf(std::string_view records) {
    return kHeader + ("DATA;\n" + std::string(records)) + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// What comes of a load.
struct Loaded {
    ModelPtr model;
    bool hasLog = false;  // a log file was made
    std::string log;

    template <class T>
    T* get(std::uint64_t index) const {
        return cast<T>(model->get(index));
    }
    /// The instance numbers of the entities, in the order of the model: "1 5 7".
    std::string ids() const {
        std::string text;
        for (std::uint64_t i = 0; i < model->getNumEntities(); ++i) {
            text += (i ? " " : "") + std::to_string(model->get(i)->ifcId());
        }
        return text;
    }
};

inline Loaded load(const Files& files, std::string_view text, IfcReadOptions options = {},
                   IfcHeader* header = nullptr, ProgressMeter* meter = nullptr) {
    const auto path = files.make("in.ifc", text);
    std::filesystem::remove(files.path("in.log"));
    Loaded loaded;
    {
        ErrLog log(files.path("in.log"));
        loaded.model.reset(IfcModel::read(path, &log, meter, &options, header));
    }
    loaded.hasLog = std::filesystem::exists(files.path("in.log"));
    loaded.log = files.text("in.log");
    return loaded;
}

/// The same of a file with these records.
inline Loaded loadRecords(const Files& files, std::string_view records,
                          IfcReadOptions options = {}) {
    return load(files, fileOf(records), options);
}

}  // namespace Ovik::Test
