uniform Texture2D albedoMap : register(t0);
uniform SamplerState sampler_albedoMap:register(s0);
uniform float alphaReference;
uniform float4 objectColor;
struct FS_INPUT{
float4 oDummyProj : SV_Position; 
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
	float2 oUV : TEXCOORD2;
};
struct FS_OUTPUT{
	float4 oColor : SV_Target0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float2 ioUV = input.oUV;
	float3 ioWorldPos = input.oWorldPos;
	float3 ioNormal = input.oNormal;
	FS_OUTPUT output;
	float4 albedo = albedoMap.Sample(sampler_albedoMap,ioUV);
	if(albedo.w<alphaReference ) {
		discard; 
	} 
	output.oColor = objectColor;
	return output;
}
