#pragma once
// The per-user settings: texts under the program's name, section "Settings", in the user's configuration folder.
//
// Keys compare without regard to case. All values are text; numbers are written with "." whatever the locale. A file
// that is damaged, huge, unreadable or of another program reads as "no value stored" and never stops anything; a value
// that cannot be written is dropped silently. The file is its owner's alone. Interface thread; nothing raises.

#include <QString>

QString GetSetting(const QString &key, const QString &otherwise = {});
void SaveSetting(const QString &key, const QString &value);

double GetSettingNumber(const QString &key, double otherwise); // the leading number of the text
void SaveSettingNumber(const QString &key, double value);

void SyncSettings(); // brings what was saved to disk now; else the event loop does it soon

// Tests (and nobody else) keep the settings in this file; "" goes back to the user's own.
void SetSettingsFile(const QString &path);
