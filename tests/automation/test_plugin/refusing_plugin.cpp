extern "C" __attribute__((visibility("default"))) bool InitializeUsrDriver_ZelLampManager() {
  return false;
}
