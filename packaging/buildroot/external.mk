include $(sort $(wildcard $(BR2_EXTERNAL_CMIF_PATH)/*/*.mk))
