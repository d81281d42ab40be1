#include "adapters/git/Labels.hpp"

#include <algorithm>
#include <optional>

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/Message.hpp"
#include "adapters/git/RefName.hpp"

namespace hearthmake::git {

namespace {

constexpr int kAttempts = 1000;  // names tried for a tag

struct TagRef {
  std::string name;
  git_oid target{};
  LabelEntry entry;
};

void ReadSignature(const git_signature* signature, LabelEntry& entry) {
  if (signature == nullptr) return;
  entry.user = ReadableText(signature->name);
  entry.time = signature->when.time;
}

void ReadTag(const git_tag* tag, LabelEntry& entry) {
  const char* text = git_tag_message(tag);
  const Message message = ParseMessage(text == nullptr ? "" : text);
  const auto label = message.Find("Label");
  const auto path = message.Find("Path");
  entry.comment = message.comment;
  if (label && path) {
    entry.label = *label;
    entry.path = ItemPath::Parse(*path);
  } else if (text != nullptr) {
    entry.comment = ReadableText(text);
    while (entry.comment.ends_with('\n')) entry.comment.pop_back();
  }
  ReadSignature(git_tag_tagger(tag), entry);
}

// Nothing for a tag of something else than a commit.
std::optional<LabelEntry> ReadLabel(const Repository& repository, const std::string& name,
                                    const git_oid& id) {
  Handle<git_object> object;
  if (git_object_lookup(Out(object), repository.Get(), &id, GIT_OBJECT_ANY) != 0) return std::nullopt;
  Handle<git_object> peeled;
  if (git_object_peel(Out(peeled), object.get(), GIT_OBJECT_COMMIT) != 0) return std::nullopt;
  LabelEntry entry;
  entry.label = name.substr(std::string_view(kTagRefs).size());
  entry.commitId = *git_object_id(peeled.get());
  if (git_object_type(object.get()) == GIT_OBJECT_TAG) {
    try {
      ReadTag(reinterpret_cast<git_tag*>(object.get()), entry);
    } catch (const automation::Error&) {  // a path that can't be one: somebody's own tag
      return std::nullopt;
    }
  } else {
    ReadSignature(git_commit_committer(repository.Commit(entry.commitId).get()), entry);
  }
  return entry;
}

std::vector<TagRef> ReadTags(const Session& session) {
  std::vector<TagRef> tags;
  for (const auto& [name, id] : session.Refs().List(kTagRefs)) {
    auto entry = ReadLabel(session.Repo(), name, id);
    if (entry) tags.push_back({name, id, std::move(*entry)});
  }
  return tags;
}

git_oid WriteTag(const Session& session, const std::string& ref, const std::string& message,
                 const git_oid& commitId) {
  Handle<git_object> commit;
  Check(git_object_lookup(Out(commit), session.Repo().Get(), &commitId, GIT_OBJECT_COMMIT), ref);
  const std::string name = ref.substr(std::string_view(kTagRefs).size());
  const Handle<git_signature> who = session.Signature();
  git_oid id{};
  Check(git_tag_annotation_create(&id, session.Repo().Get(), name.c_str(), commit.get(), who.get(),
                                  message.c_str()),
        ref);
  return id;
}

const TagRef* FindTag(const std::vector<TagRef>& tags, std::string_view label, const ItemPath& path) {
  for (const TagRef& tag : tags) {
    const bool isSameItem = tag.entry.path.IsAtOrBelow(path) && path.IsAtOrBelow(tag.entry.path);
    if (isSameItem && tag.entry.label == label) return &tag;
  }
  return nullptr;
}

}  // namespace

std::vector<LabelEntry> FindLabels(const Session& session, const ItemPath& path) {
  std::vector<LabelEntry> labels;
  for (TagRef& tag : ReadTags(session)) {
    if (path.IsAtOrBelow(tag.entry.path)) labels.push_back(std::move(tag.entry));
  }
  // On one commit the item's own come before those of the items above it.
  std::stable_sort(labels.begin(), labels.end(), [](const LabelEntry& a, const LabelEntry& b) {
    const std::size_t depthOfA = a.path.Names().size();
    const std::size_t depthOfB = b.path.Names().size();
    return depthOfA != depthOfB ? depthOfA > depthOfB : a.time > b.time;
  });
  return labels;
}

void PutLabel(const Session& session, const TreeItem& item, const git_oid& commitId, std::string_view label,
              std::string_view comment) {
  if (label.empty()) Fail(Number::kInvalidArgument, item.path.Spec() + ": a label can't be empty");
  const std::string message =
      PrintMessage(comment, {{"Label", std::string(label)}, {"Path", item.path.Spec()}});
  const Handle<git_signature> who = session.Signature();
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const std::vector<TagRef> tags = ReadTags(session);
    const TagRef* known = FindTag(tags, label, item.path);
    const std::string ref = known != nullptr ? known->name : kTagRefs + TagName(label, item.path, attempt);
    if (known == nullptr && session.Refs().Read(ref)) continue;  // the name of another label
    const git_oid id = WriteTag(session, ref, message, commitId);
    const auto from = known == nullptr ? std::nullopt : std::optional(known->target);
    if (session.Refs().Change(ref, from, id, who.get(), "label")) return;
  }
  Fail(Number::kGitFailed, item.path.Spec() + ": no tag could be made for the label " + std::string(label));
}

}  // namespace hearthmake::git
