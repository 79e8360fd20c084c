#include "tools/setup/SettingsList.h"

namespace quorvane::setup {
namespace {

struct Release {
  void operator()(GVariant* value) const { g_variant_unref(value); }
  void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
  void operator()(char* text) const { g_free(text); }
};
using Value = std::unique_ptr<GVariant, Release>;

/// To ask for a schema that isn't there would end the program.
bool hasList(const char* schema, const char* key) {
  GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
  if (source == nullptr) return false;
  const std::unique_ptr<GSettingsSchema, Release> found(
      g_settings_schema_source_lookup(source, schema, TRUE));
  return found != nullptr && g_settings_schema_has_key(found.get(), key) != FALSE;
}

std::string textOf(GVariant* value) {
  const std::unique_ptr<char, Release> text(g_variant_print(value, FALSE));
  return text.get();
}

}  // namespace

SettingsList::SettingsList(const char* schema, const char* key) : key_(key) {
  if (!hasList(schema, key)) return;
  settings_.reset(g_settings_new(schema));
  const Value value(g_settings_get_value(settings_.get(), key));
  if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_ARRAY)) settings_.reset();
}

bool SettingsList::isUsers() const {
  GVariant* const value = g_settings_get_user_value(settings_.get(), key_);
  return value != nullptr && Value(value) != nullptr;
}

std::vector<std::string> SettingsList::entries() const {
  const Value list(g_settings_get_value(settings_.get(), key_));
  std::vector<std::string> texts;
  for (gsize index = 0; index < g_variant_n_children(list.get()); ++index) {
    const Value entry(g_variant_get_child_value(list.get(), index));
    texts.push_back(textOf(entry.get()));
  }
  return texts;
}

// What a backend refuses shows only once everything has been handed over.
bool SettingsList::write(const std::vector<std::string>& entries) {
  const Value now(g_settings_get_value(settings_.get(), key_));
  std::string text;
  for (const std::string& each : entries) text += (text.empty() ? "[" : ", ") + each;
  text += text.empty() ? "[]" : "]";
  GVariant* const value =
      g_variant_parse(g_variant_get_type(now.get()), text.c_str(), nullptr, nullptr, nullptr);
  if (value == nullptr) return false;
  const Value owned(value);
  if (g_settings_set_value(settings_.get(), key_, value) == FALSE) return false;
  g_settings_sync();
  return this->entries() == entries;
}

bool SettingsList::reset() {
  g_settings_reset(settings_.get(), key_);
  g_settings_sync();
  return !isUsers();
}

}  // namespace quorvane::setup
