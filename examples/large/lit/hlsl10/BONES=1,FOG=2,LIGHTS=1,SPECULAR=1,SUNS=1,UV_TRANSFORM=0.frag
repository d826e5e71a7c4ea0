uniform Texture2D albedoMap : register(t0);
uniform SamplerState sampler_albedoMap:register(s0);
uniform float3 eyePosition;
uniform float3 ambientColor;
uniform float4 light_0;
uniform float3 lightColor_0;
uniform float3 specularColor;
uniform float shininess;
uniform float3 fogColor;
uniform float3 fogRange;
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
	float3 ioNormal = input.oNormal;
	float3 ioWorldPos = input.oWorldPos;
	FS_OUTPUT output;
	float4 albedo = albedoMap.Sample(sampler_albedoMap,ioUV);
	float3 surfaceNormal = normalize(ioNormal);
	float3 toEye = eyePosition-ioWorldPos;
	float eyeDistance = length(toEye);
	float3 viewDir = toEye/eyeDistance;
	float3 diffuse = ambientColor;
	float3 highlights = float3(0.0,0.0,0.0);
	float3 lightDir = float3(0.0,1.0,0.0);
	float attenuation = 1.0;
	// A sun: xyz points to it.
	lightDir = normalize(light_0.xyz);
	attenuation = 1.0;
	diffuse += lightColor_0*(max(dot(surfaceNormal,lightDir),0.0)*attenuation);
	float3 halfway_0 = normalize(lightDir+viewDir);
	highlights += lightColor_0*(pow(max(dot(surfaceNormal,halfway_0),0.0),shininess)*attenuation);
	float3 lit = albedo.xyz*diffuse;
	lit += specularColor*highlights;
	float clearness = pow(2.7182818,-(eyeDistance*fogRange.z));
	lit = lerp(fogColor,lit,saturate(clearness));
	output.oColor = float4(lit,albedo.w);
	return output;
}
