#pragma once
// Saves the stored connections beside living windows: another writer may hold the lock for a while, and a large store
// takes its time on the disk. Interface thread; returns when the save has ended, and lets events but the user's input
// through until then. A save that one of these events asks for comes behind this one. False as ConnectionStore::Save.

class ConnectionStore;
class clsConns;

bool SaveBeside(ConnectionStore &store, const clsConns &conns);
