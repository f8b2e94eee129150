#include "SampleChanges.h"

#include "models/DiffParser.h"

#include <QUrl>
#include <QUuid>

#include <algorithm>

namespace vantrel::screenshots {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr char tokenStoreDiff[] = R"(@@ -14,7 +14,8 @@ namespace ledger::auth {
 namespace {
-constexpr auto kSkew = std::chrono::seconds(5);
+constexpr auto kSkew = std::chrono::seconds(30);
+constexpr auto kRefreshTimeout = std::chrono::seconds(10);
 }  // namespace
 
 TokenStore::TokenStore(Clock& clock, HttpClient& http)
@@ -41,16 +42,21 @@ TokenStore::TokenStore(Clock& clock, HttpClient& http)
 std::optional<Token> TokenStore::current() {
   std::lock_guard lock(mutex_);
-  if (!token_ || token_->expiresAt <= clock_.now()) {
-    return std::nullopt;
+  if (token_ && token_->expiresAt - kSkew > clock_.now()) {
+    return token_;
   }
-  return token_;
+  return std::nullopt;
 }
 
 Token TokenStore::refresh(const std::string& refreshToken) {
-  auto reply = http_.post(tokenUrl_, {{"grant_type", "refresh_token"}, {"refresh_token", refreshToken}});
-  std::lock_guard lock(mutex_);
-  token_ = parseToken(reply.body);
-  return *token_;
+  return gate_.run([&] {
+    auto reply = http_.post(tokenUrl_, {{"grant_type", "refresh_token"}, {"refresh_token", refreshToken}}, kRefreshTimeout);
+    if (reply.status == 400) {
+      throw SignInRequired("The refresh token was revoked.");
+    }
+    std::lock_guard lock(mutex_);
+    token_ = parseToken(reply.body);
+    return *token_;
+  });
 }
 
@@ -88,8 +94,9 @@ void TokenStore::store(Token token)
 void TokenStore::clear() {
   std::lock_guard lock(mutex_);
+  gate_.cancel();
   token_.reset();
-  log_.info("token cleared");
+  log_.info("Token cleared");
 }
 
 bool TokenStore::hasToken() const {
   std::lock_guard lock(mutex_);
   return token_.has_value();
@@ -120,4 +127,5 @@ Token TokenStore::parseToken(const std::string& body)
   Token token;
   token.value = json.at("access_token").get<std::string>();
-  token.expiresAt = clock_.now() + std::chrono::seconds(json.at("expires_in").get<int>());
+  const auto lifetime = std::chrono::seconds(json.value("expires_in", 3600));
+  token.expiresAt = clock_.now() + lifetime;
   return token;
)";

std::int64_t countOf(RawLineKind kind, const QList<RawHunk> &hunks)
{
    std::int64_t count = 0;
    for (const RawHunk &hunk : hunks) {
        count += std::count_if(hunk.lines.cbegin(), hunk.lines.cend(),
                               [kind](const RawDiffLine &line) { return line.kind == kind; });
    }
    return count;
}

FileChange fileWith(const QString &path, ChangeStatus status, const QList<RawHunk> &hunks)
{
    FileChange file;
    file.path = path;
    file.status = status;
    file.hunks = hunks;
    file.additions = countOf(RawLineKind::addition, hunks);
    file.deletions = countOf(RawLineKind::deletion, hunks);
    return file;
}

/// A file that is listed and never opened: only the numbers of its lines matter.
FileChange listedFile(const QString &path, ChangeStatus status, int additions, int deletions)
{
    RawHunk hunk;
    hunk.header = TextSlice::fromString(u"@@ -1,%1 +1,%2 @@"_s.arg(deletions).arg(additions));
    hunk.oldStart = 1;
    hunk.newStart = 1;
    hunk.lines = QList<RawDiffLine>(deletions, RawDiffLine{RawLineKind::deletion, {}});
    hunk.lines += QList<RawDiffLine>(additions, RawDiffLine{RawLineKind::addition, {}});
    return fileWith(path, status, {hunk});
}

} // namespace

QString sampleHome()
{
    return u"/home/mira/"_s;
}

Repo sampleRepository()
{
    Repo repo;
    repo.id = QUuid::createUuidV5(QUuid(), u"ledger-api"_s);
    repo.url = QUrl::fromLocalFile(sampleHome() + u"src/ledger-api"_s);
    repo.name = u"ledger-api"_s;
    return repo;
}

QList<FileChange> sampleFiles()
{
    const QList<RawHunk> tokenStore =
        parseUnifiedDiff(TextSlice::fromUtf8(QByteArray(tokenStoreDiff)));
    return {
        listedFile(u"CMakeLists.txt"_s, ChangeStatus::modified, 3, 1),
        fileWith(u"assets/sign-in.png"_s, ChangeStatus::modified, {}),
        listedFile(u"docs/token-refresh.md"_s, ChangeStatus::added, 36, 0),
        listedFile(u"src/auth/refresh_gate.cpp"_s, ChangeStatus::added, 31, 0),
        listedFile(u"src/auth/refresh_gate.h"_s, ChangeStatus::added, 24, 0),
        fileWith(u"src/auth/token_store.cpp"_s, ChangeStatus::modified, tokenStore),
        listedFile(u"src/http/client.cpp"_s, ChangeStatus::modified, 14, 9),
        listedFile(u"src/http/legacy_retry.cpp"_s, ChangeStatus::deleted, 0, 143),
        listedFile(u"src/http/retry_policy.cpp"_s, ChangeStatus::modified, 6, 21),
        listedFile(u"tests/auth/token_store_test.cpp"_s, ChangeStatus::modified, 47, 3),
    };
}

QHash<QString, QString> sampleSummaries()
{
    return {
        {u"CMakeLists.txt"_s, u"Builds the new refresh gate and drops the retired retry source."_s},
        {u"docs/token-refresh.md"_s,
         u"Describes when a token is refreshed and what a caller sees if it fails."_s},
        {u"src/auth/refresh_gate.cpp"_s,
         u"Lets one thread refresh the token while the others wait for its result."_s},
        {u"src/auth/refresh_gate.h"_s,
         u"Declares the gate that joins simultaneous refreshes into one."_s},
        {u"src/auth/token_store.cpp"_s,
         u"Refreshes expired access tokens once and shares the result between waiting callers."_s},
        {u"src/http/client.cpp"_s,
         u"Asks for a fresh token after a 401 and repeats the request."_s},
        {u"src/http/legacy_retry.cpp"_s, u"Removes the retry loop that nothing uses any more."_s},
        {u"src/http/retry_policy.cpp"_s, u"Leaves the sign-in failures to the token store."_s},
        {u"tests/auth/token_store_test.cpp"_s,
         u"Covers simultaneous refreshes and a refresh token that was revoked."_s},
    };
}

QString sampleNarrative()
{
    return u"This change makes expired sign-ins recover without asking the user again. The token "
           "store now refreshes an access token once and shares the result between every caller "
           "that is waiting for it, through a new refresh gate. The HTTP client asks the store for "
           "a fresh token after a 401 and repeats the request, which replaces the old retry loop; "
           "that loop and its tests are removed."_s;
}

QList<HunkExplanation> sampleExplanations()
{
    HunkExplanation margins;
    margins.tag = u"Behaviour"_s;
    margins.explanation =
        u"Tokens now count as expired 30 seconds early, and a refresh may take ten seconds."_s;

    HunkExplanation heart;
    heart.tag = u"Bug fix"_s;
    heart.explanation =
        u"This is the heart of the sign-in change: a token is now refreshed once, and every "
        "waiting caller gets that one result. `current()` treats a token as expired 30 seconds "
        "early, so a request no longer leaves with a token that dies on the way. `refresh()` runs "
        "inside the gate and turns a 400 reply into `SignInRequired` instead of parsing it as a "
        "token. The HTTP client relies on this when it repeats a request after a 401."_s;
    heart.points = {u"Callers must now handle SignInRequired."_s,
                    u"The mutex is no longer held during the request."_s};
    heart.suggestedQuestions = {u"What should I test?"_s, u"Why 30 seconds?"_s};

    HunkExplanation clearing;
    clearing.tag = u"Behaviour"_s;
    clearing.explanation = u"Clearing the store also cancels a refresh that is under way."_s;

    HunkExplanation lifetime;
    lifetime.tag = u"Bug fix"_s;
    lifetime.explanation = u"A reply without a lifetime no longer fails: an hour is assumed."_s;

    return {margins, heart, clearing, lifetime};
}

} // namespace vantrel::screenshots
