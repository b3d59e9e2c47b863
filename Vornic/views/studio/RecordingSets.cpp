#include "Vornic/views/studio/RecordingSets.h"

#include "Vornic/views/shared/QmlText.h"

#include <QCoreApplication>
#include <QStringList>
#include <filesystem>

namespace vornic {

namespace {

class Set {
  public:
    explicit Set(QString text) : text_(std::move(text)) {}

    void add(const std::string& id, const QString& name) {
        ids_.append(QString::fromStdString(id));
        names_.append(name);
    }
    void appendTo(QVariantList& sets) const {
        if (!ids_.isEmpty()) {
            sets.append(QVariantMap{{"text", text_}, {"ids", ids_}, {"names", names_}});
        }
    }

  private:
    QString text_;
    QStringList ids_, names_;
};

Set setOf(const SoundPack& pack, const QString& kind,
          const std::vector<std::filesystem::path>& files) {
    Set set(qmlText(pack.name()) + " · " + kind);
    for (const std::filesystem::path& file : files) {
        set.add(pack.sampleID(file), qmlText(file.stem().string()));
    }
    return set;
}

} // namespace

QVariantList recordingSets(const std::vector<SoundPack>& packs,
                           const std::vector<SampleInfo>& others) {
    Set yours(QCoreApplication::translate("Studio", "Yours"));
    Set parts(QCoreApplication::translate("Studio", "Parts"));
    for (const SampleInfo& info : others) {
        (info.builtIn ? parts : yours).add(info.id, qmlText(info.name));
    }
    QVariantList sets;
    yours.appendTo(sets);
    for (const SoundPack& pack : packs) {
        for (const auto& [keyClass, files] : pack.files) {
            setOf(pack, qmlText(packFileWord(keyClass)), files).appendTo(sets);
        }
        setOf(pack, QCoreApplication::translate("Studio", "releases"), pack.releaseFiles)
            .appendTo(sets);
    }
    parts.appendTo(sets);
    return sets;
}

} // namespace vornic
