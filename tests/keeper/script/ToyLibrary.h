#pragma once

#include <algorithm>

#include "keeper/script/ScriptObject.h"

/// A thing of a small music library in memory: properties by term, and the things in it.
class ToyThing : public ScriptObject {
 public:
  ToyThing(const ScriptDictionary &dictionary, QString term)
      : words(dictionary), thingClass(std::move(term)) {}

  QString className() const override { return thingClass; }
  bool isSame(const ScriptObject &other) const override { return this == &other; }
  bool exists() const override { return !gone; }

  ScriptValue property(const QString &term) override {
    if (ScriptValue *found = find(term)) return *found;
    throw ScriptError{scriptErrors::kCannotGet, QStringLiteral("Can't get %1.").arg(term), {}};
  }
  void setProperty(const QString &term, const ScriptValue &value) override {
    if (term == u"persistent id") throw ScriptError{scriptErrors::kAccessNotAllowed, QString(), {}};
    ScriptValue *found = find(term);
    if (!found) throw ScriptError{scriptErrors::kCannotSet, QString(), {}};
    *found = value;
  }

  qsizetype elementCount(const QString &term) override { return qsizetype(elements(term).size()); }
  ScriptObjects elements(const QString &term) override {
    ScriptObjects found;
    for (const auto &thing : things) {
      if (words.isKindOf(thing->thingClass, term)) found.push_back(thing);
    }
    return found;
  }
  ScriptObjectPtr elementAt(const QString &term, qsizetype index) override {
    const ScriptObjects all = elements(term);
    return index < qsizetype(all.size()) ? all[size_t(index)] : nullptr;
  }
  std::optional<ScriptObjects> elementsWhere(const QString &term, const QString &name,
                                             const ScriptValue &value) override {
    if (name != u"persistent id" || !value.is(ScriptValue::Type::Text)) return std::nullopt;
    ++lookUps;
    ScriptObjects found;
    for (const ScriptObjectPtr &thing : elements(term)) {
      const QString text = thing->property(name).text();
      if (text.compare(value.text(), Qt::CaseInsensitive) == 0) found.push_back(thing);
    }
    return found;
  }
  std::optional<ScriptListItems> column(const QString &term, const QString &name) override {
    if (name != u"name") return std::nullopt;
    ScriptListItems values;
    for (const ScriptObjectPtr &thing : elements(term)) values.push_back(thing->property(name));
    return values;
  }

  ScriptValue *find(const QString &term) {
    for (auto &[key, value] : properties) {
      if (key == term) return &value;
    }
    return nullptr;
  }

  const ScriptDictionary &words;
  QString thingClass;
  ScriptRecordFields properties;
  std::vector<std::shared_ptr<ToyThing>> things;
  bool gone = false;
  int lookUps = 0;
};

/// The words that things and application share.
struct ToyWords {
  ToyWords() {
    dictionary.addClass({QStringLiteral("application"), QStringLiteral("applications"), QString()});
    dictionary.addClass({QStringLiteral("playlist"), QStringLiteral("playlists"), QString()});
    for (const char16_t *term : {u"library playlist", u"user playlist"}) {
      const QString name = QString::fromUtf16(term);
      dictionary.addClass({name, name + u's', QStringLiteral("playlist")});
    }
    dictionary.addClass({QStringLiteral("track"), QStringLiteral("tracks"), QString()});
    dictionary.addClass(
        {QStringLiteral("file track"), QStringLiteral("file tracks"), QStringLiteral("track")});
    const QString terms = QStringLiteral(
        "name,persistent id,version,smart,special kind,artist,album,played count,played date,location,size,"
        "properties,fixed indexing,id");
    for (const QString &term : terms.split(u',')) dictionary.addProperty(term);
    for (const char16_t *term : {u"none", u"playing"}) dictionary.addConstant(QString::fromUtf16(term));
    dictionary.addVerb({QStringLiteral("delete"), {}});
    dictionary.addVerb({QStringLiteral("duplicate"), {QStringLiteral("to")}});
    dictionary.addVerb({QStringLiteral("make"), {QStringLiteral("new"), QStringLiteral("with properties")}});
    dictionary.addVerb({QStringLiteral("refresh"), {}});
  }

  ScriptDictionary dictionary;
};

/// "Toy Music": a library playlist of three tracks and user playlists "Road", "Smart" and "road".
class ToyLibrary : private ToyWords, public ScriptApplication {
 public:
  ToyLibrary() : root(dictionary_(), QStringLiteral("application")) {
    const auto library = add(QStringLiteral("library playlist"), QStringLiteral("Library"));
    const auto road = add(QStringLiteral("user playlist"), QStringLiteral("Road"));
    add(QStringLiteral("user playlist"), QStringLiteral("Smart"))->setProperty(QStringLiteral("smart"), true);
    add(QStringLiteral("user playlist"), QStringLiteral("road"));
    for (const char16_t *name : {u"One", u"Two", u"Three"})
      library->things.push_back(track(QString::fromUtf16(name)));
    road->things = {library->things[0], library->things[2]};
    root.properties = {{QStringLiteral("version"), QStringLiteral("1.2")},
                       {QStringLiteral("name"), QStringLiteral("Toy Music")},
                       {QStringLiteral("fixed indexing"), false}};
  }

  const ScriptDictionary &dictionary() const override { return ToyWords::dictionary; }
  bool answersTo(const QString &name) const override { return name == u"Toy Music" || name == u"toy.music"; }
  QString className() const override { return root.className(); }
  bool isSame(const ScriptObject &other) const override { return this == &other; }
  bool exists() const override { return root.exists(); }
  ScriptValue property(const QString &term) override { return root.property(term); }
  void setProperty(const QString &term, const ScriptValue &value) override { root.setProperty(term, value); }
  qsizetype elementCount(const QString &term) override { return root.elementCount(term); }
  ScriptObjects elements(const QString &term) override { return root.elements(term); }
  ScriptObjectPtr elementAt(const QString &term, qsizetype at) override { return root.elementAt(term, at); }
  std::optional<ScriptObjects> elementsWhere(const QString &term, const QString &name,
                                             const ScriptValue &value) override {
    return root.elementsWhere(term, name, value);
  }
  std::optional<ScriptListItems> column(const QString &term, const QString &name) override {
    return root.column(term, name);
  }

  ScriptValue perform(const ScriptCommand &command) override {
    commands.append(command.verb);
    if (command.verb == u"quit") root.gone = true;
    if (command.verb == u"refresh" && onRefresh) onRefresh();
    if (command.verb == u"delete") remove(command.direct);
    if (command.verb == u"duplicate") return duplicate(command);
    if (command.verb == u"make") return make(command);
    return {};
  }

  ToyThing root;
  QStringList commands;
  std::function<void()> onRefresh;

 private:
  using Thing = std::shared_ptr<ToyThing>;

  const ScriptDictionary &dictionary_() const { return ToyWords::dictionary; }

  QString nextID() { return QStringLiteral("%1").arg(++lastID, 16, 16, QLatin1Char('0')).toUpper(); }

  Thing add(const QString &term, const QString &name) {
    auto playlist = std::make_shared<ToyThing>(dictionary_(), term);
    playlist->properties = {{QStringLiteral("name"), name},
                            {QStringLiteral("persistent id"), nextID()},
                            {QStringLiteral("smart"), false},
                            {QStringLiteral("special kind"), ScriptConstant{QStringLiteral("none")}}};
    root.things.push_back(playlist);
    return playlist;
  }

  Thing track(const QString &name) {
    auto made = std::make_shared<ToyThing>(dictionary_(), QStringLiteral("file track"));
    made->properties = {{QStringLiteral("name"), name},
                        {QStringLiteral("persistent id"), nextID()},
                        {QStringLiteral("id"), lastID},
                        {QStringLiteral("artist"), QStringLiteral("Ann")},
                        {QStringLiteral("album"), QString()},
                        {QStringLiteral("played count"), lastID},
                        {QStringLiteral("played date"), ScriptValue::missing()},
                        {QStringLiteral("size"), qint64(5'000'000'000)},
                        {QStringLiteral("location"), ScriptFile{QStringLiteral("/music/") + name, true}}};
    return made;
  }

  void removeOne(const ScriptObject *thing) {
    const auto isIt = [thing](const Thing &other) { return other.get() == thing; };
    std::erase_if(root.things, isIt);
    for (const Thing &playlist : root.things) std::erase_if(playlist->things, isIt);
  }

  void remove(const ScriptValue &direct) {
    if (direct.is(ScriptValue::Type::Object)) return removeOne(direct.object().get());
    if (!direct.is(ScriptValue::Type::List)) throw ScriptError{scriptErrors::kNotUnderstood, QString(), {}};
    for (const ScriptValue &item : direct.items()) remove(item);
  }

  ScriptValue duplicate(const ScriptCommand &command) {
    const ScriptValue *to = command.parameter(QStringLiteral("to"));
    const bool fits = to && to->is(ScriptValue::Type::Object) && command.direct.is(ScriptValue::Type::Object);
    const auto playlist = fits ? std::dynamic_pointer_cast<ToyThing>(to->object()) : nullptr;
    const auto source = fits ? std::dynamic_pointer_cast<ToyThing>(command.direct.object()) : nullptr;
    if (!playlist || !source || source == playlist || playlist->className() != u"user playlist" ||
        source->className() != u"file track") {
      throw ScriptError{scriptErrors::kCannotSet, QString(), {}};
    }
    playlist->things.push_back(source);
    return command.direct;
  }

  ScriptValue make(const ScriptCommand &command) {
    const ScriptValue *fields = command.parameter(QStringLiteral("with properties"));
    const bool named = fields && fields->is(ScriptValue::Type::Record);
    const ScriptValue *name = named ? fields->field(QStringLiteral("name")) : nullptr;
    if (!name || !name->is(ScriptValue::Type::Text))
      throw ScriptError{scriptErrors::kBadParameter, QString(), {}};
    return ScriptObjectPtr(add(QStringLiteral("user playlist"), name->text()));
  }

  int lastID = 0;
};
