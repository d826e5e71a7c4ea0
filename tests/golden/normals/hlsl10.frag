uniform Texture2D normalMap : register(t1);
uniform SamplerState sampler_normalMap:register(s1);
uniform float bumpiness;
struct FS_INPUT{
float4 oDummyProj : SV_Position; 
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
	float2 oUV : TEXCOORD2;
	float4 oTangent : TEXCOORD3;
};
struct FS_OUTPUT{
	float4 oColor : SV_Target0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float3 ioNormal = input.oNormal;
	float2 ioUV = input.oUV;
	float4 ioTangent = input.oTangent;
	float3 ioWorldPos = input.oWorldPos;
	FS_OUTPUT output;
	float3 surfaceNormal = normalize(ioNormal);
	float4 bumpTexel = normalMap.Sample(sampler_normalMap,ioUV);
	float3 bump = bumpTexel.xyz*2.0-float3(1.0,1.0,1.0);
	float3 faceTangent = normalize(ioTangent.xyz);
	float3 faceBinormal = cross(surfaceNormal,faceTangent)*ioTangent.w;
	float3 bent = faceTangent*bump.x*bumpiness+faceBinormal*bump.y*bumpiness+surfaceNormal*bump.z;
	surfaceNormal = normalize(bent);
	output.oColor = float4(surfaceNormal*0.5+float3(0.5,0.5,0.5),1.0);
	return output;
}
