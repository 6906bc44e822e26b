// What the tests of models and of the schema classes share: loading a text with everything that
// comes of it, the records that a model writes, and an entity class outside of the library.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "ovik/ovik.h"
#include "tests/parsing.h"

namespace Ovik::Test {

using OvikTest::kDepth;
using OvikTest::TempFile;

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
    ~Probe() override { ++numDestroyed; }
    using IfcEntity::setIfcId;
    bool read(IfcInFiler& in) override { return onRead(in); }
    void write(IfcOutFiler& out) const override {
        if (ownWrite) return ownWrite(out);
        out.writeRecord(*this, [&] { onWrite(out); });
    }

    std::function<void(IfcOutFiler&)> ownWrite;
    static inline int numDestroyed = 0;
    static inline std::function<bool(IfcInFiler&)> onRead;
    static inline std::function<int(ValidationContext&)> onValidate;
    static inline std::function<void(IfcOutFiler&)> onWrite;
    static void reset() {
        numDestroyed = 0;
        onRead = [](IfcInFiler&) { return true; };
        onValidate = [](ValidationContext&) { return kValid; };
        onWrite = [](IfcOutFiler&) {};
    }

 protected:
    int validate(ValidationContext& context) override { return onValidate(context); }

 private:
    static IfcEntity* creator(IfcModel* model) { return create(*model); }
    static inline RtClass s_type{"IFCTESTPROBE", IfcEntity::desc(), creator, eIFC4};
};

inline IfcModelPtr newModel(EIfcSchemaId schema = eIFC4, bool makeGuids = false,
                            bool useTestGuid = false) {
    return IfcModelPtr(IfcModel::create(schema, makeGuids, useTestGuid));
}

/// Tests with an empty model at hand.
class ModelTest : public testing::Test {
 protected:
    void SetUp() override { Probe::reset(); }
    template <class T>
    T* make() {
        return T::create(*model_);
    }
    IfcModelPtr model_ = newModel();
};

/// A whole file of `schema` with these records.
inline std::string fileOf(std::string_view records, EIfcSchemaId schema = eIFC4) {
    return OvikTest::fileOf(records, toUtf8(XString(schemaName(schema))));
}

/// What comes of a load.
struct Loaded {
    IfcModelPtr model;
    std::string log;

    /// The entity with instance number `id`, as a `T`; null if the model has it not.
    template <class T = IfcEntity>
    T* find(int id) const {
        for (std::uint64_t i = 0; i < model->getNumEntities(); ++i) {
            if (model->get(i)->ifcId() == id) return dynamic_cast<T*>(model->get(i));
        }
        return nullptr;
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

inline Loaded load(std::string_view text, IfcReadOptions options = {}, IfcHeader* header = nullptr,
                   ProgressMeter* meter = nullptr) {
    const TempFile file(text), logFile;
    Loaded loaded;
    {
        ErrLog log(logFile.path);
        loaded.model.reset(IfcModel::read(file.path, &log, meter, &options, header));
    }
    loaded.log = logFile.text();
    EXPECT_EQ(std::filesystem::exists(logFile.path), !loaded.log.empty());
    return loaded;
}

/// The same of a file with these records.
inline Loaded loadRecords(std::string_view records, EIfcSchemaId schema = eIFC4,
                          IfcReadOptions options = {}) {
    return load(fileOf(records, schema), options);
}

/// The records of a file that was written, one to a line.
inline std::string recordsIn(const TempFile& file) {
    const std::string text = file.text();
    const std::string_view begin = "\n\nDATA;\n";
    const std::size_t from = text.find(begin) + begin.size();
    EXPECT_TRUE(text.ends_with(OvikTest::kTail));
    return text.substr(from, text.size() - OvikTest::kTail.size() - from);
}

/// The records that the model writes.
inline std::string recordsOf(const IfcModel& model) {
    const TempFile file;
    EXPECT_TRUE(model.write(file.path, IfcHeader()));
    return recordsIn(file);
}

/// The records that the model saves.
inline std::string savedRecordsOf(const IfcModel& model, bool keepNumbers = true) {
    const TempFile file;
    const IfcSaveOptions options{keepNumbers};
    EXPECT_EQ(model.save(file.path, IfcHeader(), &options), std::error_code());
    return recordsIn(file);
}

}  // namespace Ovik::Test
