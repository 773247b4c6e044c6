// A function whose name doubles its type twenty times: 223 characters that spell out as 13 million.
extern "C" void deepTypes() __asm__(
    "_Z1f1A1BIS_S_ES0_IS1_S1_ES0_IS2_S2_ES0_IS3_S3_ES0_IS4_S4_ES0_IS5_S5_ES0_IS6_S6_ES0_IS7_S7_E"
    "S0_IS8_S8_ES0_IS9_S9_ES0_ISA_SA_ES0_ISB_SB_ES0_ISC_SC_ES0_ISD_SD_ES0_ISE_SE_ES0_ISF_SF_E"
    "S0_ISG_SG_ES0_ISH_SH_ES0_ISI_SI_ES0_ISJ_SJ_E");
void deepTypes() {}

extern "C" int Custom_RegLuaLib(void*);  // else nobody would look further
extern "C" int Custom_RegLuaLib(void*) {
  return 1;
}
