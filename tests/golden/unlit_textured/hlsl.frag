uniform sampler2D albedoMap : register(s0);
uniform float3 eyePosition;
uniform float3 fogColor;
uniform float3 fogRange;
struct FS_INPUT{
	float2 oUV : TEXCOORD2;
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
};
struct FS_OUTPUT{
	float4 oColor : COLOR0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float2 ioUV = input.oUV;
	float3 ioWorldPos = input.oWorldPos;
	float3 ioNormal = input.oNormal;
	FS_OUTPUT output;
	float4 albedo = tex2D(albedoMap,ioUV);
	float3 lit = albedo.xyz;
	float3 toEye = eyePosition-ioWorldPos;
	float eyeDistance = length(toEye);
	float3 viewDir = toEye/eyeDistance;
	float fogAmount = saturate((eyeDistance-fogRange.x)/(fogRange.y-fogRange.x));
	lit = lerp(lit,fogColor,fogAmount);
	output.oColor = float4(lit,albedo.w);
	return output;
}
