#pragma once
// Puts the real windows into the AnalyzerFactory. Called once by main.
void InstallAnalyzer();
