// A plug-in that was built with a version of the host that does not exist.
extern "C" void lampHostInterface0();
extern "C" __attribute__((visibility("default"))) bool InitializeUsrDriver_ZelLampManager() {
  lampHostInterface0();
  return true;
}
